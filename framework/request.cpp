// Reads the request from the CGI variables and standard input.
#include "framework/request.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

#include "framework/checks.h"
#include "platform/descriptor.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr int kMostBytes = 64 * 1024;          // of a query, and of a body
constexpr std::chrono::seconds kPatience{60};  // with a server that sends nothing
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";
constexpr std::string_view kJsonType = "application/json";

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The other text is in lower case.
bool equalsIgnoringCase(std::string_view text, std::string_view other) {
  return std::equal(text.begin(), text.end(), other.begin(), other.end(),
                    [](char left, char right) { return lower(left) == right; });
}

std::string_view trimmed(std::string_view text) {
  while (text.ends_with(' ') || text.ends_with('\t')) text.remove_suffix(1);
  while (text.starts_with(' ') || text.starts_with('\t')) text.remove_prefix(1);
  return text;
}

// Ignores parameters of the content type, such as a charset.
bool isType(std::string_view contentType, std::string_view type) {
  return equalsIgnoringCase(trimmed(contentType.substr(0, contentType.find(';'))), type);
}

// The quality in thousandths that the parameters of a media type give: 1000 without one, 0 for a malformed
// one.
int qualityOf(std::string_view parameters) {
  while (!parameters.empty()) {
    std::string_view value = trimmed(takeUntil(';', &parameters));
    if (!equalsIgnoringCase(trimmed(takeUntil('=', &value)), "q")) continue;
    value = trimmed(value);
    int whole = 0;
    int thousandths = 0;
    const std::string_view units = takeUntil('.', &value);
    const std::string digits =
        joined({value, std::string_view{"000"}.substr(std::min<std::size_t>(value.size(), 3))});
    const bool isQuality = parseInteger(units, 0, 1, &whole) && digits.size() == 3 &&
                           consistsOf(digits, kDigits) &&
                           parseInteger(digits, 0, whole == 1 ? 0 : 999, &thousandths);
    return isQuality ? whole * 1000 + thousandths : 0;
  }
  return 1000;
}

// What an Accept header says about a media type. Of several items the most specific counts.
class Preference {
 public:
  // The type is "KIND/NAME"; kindRange is "KIND/*".
  Preference(std::string_view type, std::string_view kindRange) : ranges_{"*/*", kindRange, type} {}

  void read(std::string_view range, int quality) {
    for (int i = 2; i > specificity_; --i) {
      if (!equalsIgnoringCase(range, ranges_[i])) continue;
      specificity_ = i;
      quality_ = quality;
    }
  }
  int quality() const { return quality_; }

 private:
  std::string_view ranges_[3];
  int specificity_ = -1;
  int quality_ = 0;
};

[[gnu::cold]] bool weighsJsonMore(std::string_view accept) {
  Preference json{kJsonType, "application/*"};
  Preference text{"text/plain", "text/*"};
  while (!accept.empty()) {
    std::string_view parameters = takeUntil(',', &accept);
    const std::string_view range = trimmed(takeUntil(';', &parameters));
    const int quality = qualityOf(parameters);
    json.read(range, quality);
    text.read(range, quality);
  }
  return json.quality() > text.quality();
}

// Fills the text from standard input. False if the input ends too early.
bool readInput(std::string* text) {
  for (std::size_t filled = 0; filled < text->size();) {
    const ssize_t count = read(STDIN_FILENO, text->data() + filled, text->size() - filled);
    if (count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN)) return false;
    // Some servers give a pipe that does not block.
    if (count < 0 && errno == EAGAIN && !waitUntilReady(STDIN_FILENO, POLLIN, kPatience)) return false;
    if (count > 0) filled += static_cast<std::size_t>(count);
  }
  return true;
}

[[gnu::cold]] void takeJson(std::string_view body, Request* request) {
  std::vector<JsonMember> members;
  if (const std::string fault = parseJson(body, &members); !fault.empty()) request->error = "body: " + fault;
  for (JsonMember& member : members) {
    if (member.kind == JsonMember::kText || member.kind == JsonMember::kNumber) {
      request->params.insert_or_assign(std::move(member.name), std::move(member.texts.front()));
    } else {
      request->members.push_back(std::move(member));
    }
  }
}

// Returns an error message, or null. A JSON body sets the request's error.
const char* readBody(const CgiVariables& variables, bool keepsBytes, Request* request) {
  const std::string_view stated = variables.contentLength;
  int length = 0;
  if (!stated.empty() && !parseInteger(stated, 0, kMostBytes, &length)) return "body: at most 65536 bytes";
  if (length == 0) return nullptr;
  const bool isJson = isType(variables.contentType, kJsonType);
  if (variables.method != "POST" || !(isJson || isType(variables.contentType, kFormType)))
    return "body: a POST of type application/x-www-form-urlencoded or application/json";
  std::string body(static_cast<std::size_t>(length), '\0');
  if (!readInput(&body)) return "body: shorter than its Content-Length";
  isJson ? takeJson(body, request) : parseForm(body, request->params, keepsBytes);
  return nullptr;
}

}  // namespace

// One pass: getenv would search the whole environment for each.
CgiVariables cgiVariables() {
  CgiVariables variables;
  for (const char* const* entry = environ; *entry != nullptr; ++entry) {
    const char* text = *entry;
    const auto take = [text](std::string_view start, std::string_view* value) {
      std::size_t i = 0;  // in place, because most variables differ soon
      while (i < start.size() && text[i] == start[i]) ++i;
      if (i == start.size()) *value = text + i;
    };
    switch (*text) {
      case 'C':
        take("CONTENT_LENGTH=", &variables.contentLength);
        take("CONTENT_TYPE=", &variables.contentType);
        break;
      case 'H':
        take("HTTP_ACCEPT=", &variables.accept);
        break;
      case 'Q':
        take("QUERY_STRING=", &variables.query);
        break;
      case 'R':
        take("REQUEST_METHOD=", &variables.method);
        break;
      default:
        break;
    }
  }
  return variables;
}

void readRequest(const CgiVariables& variables, bool keepsBytes, Request* request) {
  const bool isLong = variables.query.size() > kMostBytes;
  if (!isLong) parseForm(variables.query, request->params, keepsBytes);
  const char* error = isLong ? "query: at most 65536 bytes" : readBody(variables, keepsBytes, request);
  if (error != nullptr) request->error = error;
  if (!request->error.empty()) {
    request->params.clear();
    request->members.clear();
  }
}

// Most clients send */* alone, or nothing.
bool prefersJson(std::string_view accept) {
  return !accept.empty() && accept != "*/*" && weighsJsonMore(accept);
}

}  // namespace camera
