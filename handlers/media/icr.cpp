// icr.cgi: the day/night switch.
#include "handlers/endpoint.h"
#include "platform/store/records/ir.h"

namespace camera {
namespace {

constexpr const char* kModes[] = {"auto", "manual", "day", "night"};
constexpr int kDay = 2;  // the first of the fixed modes, in which the LEDs follow the switch

constexpr auto kParams =
    paramRows<_ir_setting>(choiceParam<&_ir_setting::icr_mode>("mode", kModes).required());

}  // namespace

class ICRCgilet final : public RecordEndpoint<_ir_setting, 0> {
 public:
  ICRCgilet() : RecordEndpoint(kParams, &PIB::has_icr) {}

 private:
  int check(_ir_setting& wanted) override {
    const bool isSwitched = wanted.icr_mode != state.icr_mode;
    if (isSwitched && wanted.icr_mode >= kDay)
      wanted.ir_led = static_cast<std::uint8_t>(wanted.icr_mode - kDay);
    return 200;
  }
};

template InfCgilet* create<ICRCgilet>();

}  // namespace camera
