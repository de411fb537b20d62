// event_info.cgi: which event rules the camera can carry out: what triggers them, and what they do.
#include <algorithm>
#include <initializer_list>

#include "handlers/endpoint.h"

namespace camera {
namespace {

// Entries with commas between them.
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
  EventInfoEndpoint() : ReadOnlyEndpoint(Takes::kChanges) {}

 private:
  int load() override { return product() == nullptr ? 500 : 200; }

  int reply() override {
    const ProductInfo& known = *product();
    handlers_.add({"cifs_rec"});
    if (known.has_sdcard) handlers_.add({"sd1_rec"});
    handlers_.add({"mail_shot"});
    handlers_.add({"ftp_shot"});
    addTrigger("schedule", "", "");  // knows none of the outputs, and its rules do not end as the others
    for (std::uint32_t i = 1; i <= known.output_count; ++i) handlers_.add({"output", Decimal(i).text()});
    addTrigger("md1", "", "-event");
    for (std::uint32_t i = 1; i <= known.input_count; ++i) addTrigger("input", Decimal(i).text(), "-event");
    pair("num", rules_.count);
    pair("name", rules_.text);
    pair("events", triggers_.text);
    pair("handlers", handlers_.text);
    return 200;
  }

  // With a rule for each handler that there is by now.
  void addTrigger(std::string_view trigger, std::string_view number, std::string_view end) {
    triggers_.add({trigger, number});
    std::string_view rest = handlers_.text;
    while (!rest.empty()) {
      const std::string_view handler = rest.substr(0, rest.find(','));
      rules_.add({trigger, number, "-", handler, end});
      rest.remove_prefix(std::min(handler.size() + 1, rest.size()));
    }
  }

  List rules_;
  List triggers_;
  List handlers_;
};

template void serve<EventInfoEndpoint>();

}  // namespace camera
