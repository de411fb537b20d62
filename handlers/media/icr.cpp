// icr.cgi: the day/night switch.
#include "handlers/endpoint.h"
#include "platform/store/records/ir.h"

namespace camera {
namespace {

constexpr const char* kModes[] = {"auto", "manual", "day", "night"};
constexpr int kDay = 2;  // the first fixed mode; in fixed modes the LEDs follow the switch

constexpr auto kParams = paramRows<IrSettings>(choiceParam<&IrSettings::icr_mode>("mode", kModes).required());

}  // namespace

class IcrEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_icr> {
  int check(IrSettings& wanted) override {
    const bool isSwitched = wanted.icr_mode != state.icr_mode;
    if (isSwitched && wanted.icr_mode >= kDay)
      wanted.ir_led = static_cast<std::uint8_t>(wanted.icr_mode - kDay);
    return 200;
  }
};

template <>
const Api kApi<IcrEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPicture,
     .summary = "The day/night switch, which removes the infrared filter at night.",
     .records = "`ir`",
     .feature = &ProductInfo::has_icr,
     .params = {{"mode",
                 "Sets the switch; a change to `day` turns the infrared LEDs off, a change to "
                 "`night` turns them on."}},
     .state = factoryState<IrSettings>});
template struct EndpointOf<IcrEndpoint>;

}  // namespace camera
