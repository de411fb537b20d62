// event_info.cgi: the event rules that the camera can have: their triggers and handlers.
#include <initializer_list>

#include "handlers/endpoint.h"

namespace camera {
namespace {

// A list with commas between its entries.
struct List {
  std::string text;
  int count = 0;

  void add(std::initializer_list<std::string_view> pieces) {
    if (count++ > 0) text += ',';
    for (const std::string_view piece : pieces) text += piece;
  }
};

}  // namespace

class EventInfoEndpoint final : public ReadOnlyEndpoint {
 public:
  // Unreadable product information is reported before an unknown parameter.
  EventInfoEndpoint() : ReadOnlyEndpoint(Takes::kChanges) {}

 private:
  int load() override { return product() == nullptr ? 500 : 200; }

  int reply() override {
    const ProductInfo& info = *product();
    handlers_.add({"cifs_rec"});
    if (info.has_sdcard) handlers_.add({"sd1_rec"});
    handlers_.add({"mail_shot"});
    handlers_.add({"ftp_shot"});
    addTrigger("schedule", "", "");  // before the outputs are listed, because it has no rules for them
    for (std::uint32_t i = 1; i <= info.output_count; ++i) handlers_.add({"output", Decimal(i).text()});
    addTrigger("md1", "", "-event");
    for (std::uint32_t i = 1; i <= info.input_count; ++i) addTrigger("input", Decimal(i).text(), "-event");
    pair("num", rules_.count);
    list("name", rules_.text);
    list("events", triggers_.text);
    list("handlers", handlers_.text);
    return 200;
  }

  // Adds a rule for each handler that is listed so far.
  void addTrigger(std::string_view trigger, std::string_view number, std::string_view end) {
    triggers_.add({trigger, number});
    std::string_view rest = handlers_.text;
    while (!rest.empty()) rules_.add({trigger, number, "-", takeUntil(',', &rest), end});
  }

  List rules_;
  List triggers_;
  List handlers_;
};

template <>
const Api kApi<EventInfoEndpoint> = {
    .subsystem = Subsystem::kEvents,
    .summary =
        "The event rules that the camera supports: every trigger combined with every action (handler).",
    .reply = {
        {"num", ApiType::kNumber, "The number of rules in `name`."},
        {"name", ApiType::kTexts,
         "The rules, in text separated by commas: `schedule-HANDLER`, and `TRIGGER-HANDLER-event` for "
         "every other trigger."},
        {"events", ApiType::kTexts,
         "The triggers: `schedule`, `md1` (motion), and `input1`, `input2` ... for the digital inputs."},
        {"handlers", ApiType::kTexts,
         "The actions: `cifs_rec` (record to a network share), `sd1_rec` (record to the SD card, if there is "
         "a slot), `mail_shot`, `ftp_shot` (send a picture), and `output1`, `output2` ... for the digital "
         "outputs, which are not combined with `schedule`."}}};
template struct EndpointOf<EventInfoEndpoint>;

}  // namespace camera
