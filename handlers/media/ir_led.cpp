// irled.cgi: the infrared LEDs, which can be changed only while the day/night switch is manual.
#include "handlers/endpoint.h"
#include "platform/store/records/ir.h"

namespace camera {
namespace {

constexpr int kManual = 1;

constexpr auto kParams = paramRows<IrSettings>(choiceParam<&IrSettings::ir_led>("mode", kOffOn).required());

}  // namespace

class IrLedEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_irled> {
  int check(IrSettings& wanted) override {
    return wanted.icr_mode == kManual ? 200 : refuse("mode", "only while the day/night switch is manual");
  }
};

template <>
const Api kApi<IrLedEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPicture,
     .summary = "The infrared LEDs.",
     .records = "`ir`",
     .feature = &ProductInfo::has_irled,
     .dependent = "mode",
     .params = {{"mode", "Switches the LEDs; accepted only while `mode` of icr.cgi is `manual`."}},
     .state = factoryState<IrSettings>});
template struct EndpointOf<IrLedEndpoint>;

}  // namespace camera
