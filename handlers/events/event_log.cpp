// event_log.cgi: the log lines that report a detection, each with a mark of its kind.
#include <algorithm>

#include "handlers/endpoint.h"
#include "platform/shell.h"

namespace camera {
namespace {

constexpr char kPrintLog[] = "send_cmd logd 402";

// A line is of the first kind whose phrase it contains.
struct Kind {
  std::string_view phrase;
  std::string_view mark;
};
constexpr Kind kKinds[] = {
    {"by Motion Detection", "md "},       {"by Sound Detection", "sd "}, {"by Hot Thermal Detection", "th "},
    {"by Cold Thermal Detection", "tc "}, {"by Digital Input", "di "},
};

// Appends a line of the log, or a piece of a long one, to the std::string in context, if it reports a
// detection.
void keepDetection(const char* piece, void* context) {
  const std::string_view line = piece;
  const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [line](const Kind& k) { return line.find(k.phrase) != line.npos; });
  if (kind != std::end(kKinds)) {
    static_cast<std::string*>(context)->append(kind->mark).append(line);
  }
}

}  // namespace

class EventLogEndpoint final : public Endpoint {
 public:
  EventLogEndpoint() : Endpoint({.rows = {}, .unknown = UnknownNames::kIgnore}) {}

 private:
  // If the log cannot be read, the reply is empty.
  int load() override {
    lines_.clear();
    readCommand(kPrintLog, keepDetection, &lines_);
    return 200;
  }
  int apply() override { return takeParams(nullptr); }
  int reply() override {
    if (!isJson()) {
      fullReply().append(lines_);
      return 200;
    }
    JsonArray lines;
    for (std::string_view rest = lines_; !rest.empty();) lines.add(jsonString(takeUntil('\n', &rest)));
    value("lines", lines.text());
    return 200;
  }

  std::string lines_;
};

template <>
const Api kApi<EventLogEndpoint> = {
    .subsystem = Subsystem::kEvents,
    .summary = "The lines of the camera's log that report a detection, oldest first.",
    .reply = {{"lines", ApiType::kTexts,
               "Each line of the log, with a mark and a space before it: `md` motion, `sd` sound, `th` heat, "
               "`tc` cold, `di` digital input. In text the lines have no key."}},
    .rows = {.rows = {}, .unknown = UnknownNames::kIgnore}};
template struct EndpointOf<EventLogEndpoint>;

}  // namespace camera
