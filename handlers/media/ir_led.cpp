// irled.cgi: the infrared LEDs, while the day/night switch leaves them to people.
#include "handlers/endpoint.h"
#include "platform/store/records/ir.h"

namespace camera {
namespace {

constexpr int kManual = 1;

constexpr auto kParams = paramRows<_ir_setting>(choiceParam<&_ir_setting::ir_led>("mode", kOffOn).required());

}  // namespace

class IRLEDCgilet final : public RecordEndpoint<_ir_setting, 0> {
 public:
  IRLEDCgilet() : RecordEndpoint(kParams, &PIB::has_irled) {}

 private:
  int check(_ir_setting& wanted) override {
    return wanted.icr_mode == kManual ? 200 : refuse("mode", "only while the day/night switch is manual");
  }
};

template InfCgilet* create<IRLEDCgilet>();

}  // namespace camera
