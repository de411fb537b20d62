// motion.cgi: motion detection in the picture, and by the infrared sensor where there is one.
#include "handlers/endpoint.h"
#include "handlers/media/sensor_tables.h"
#include "platform/product/sensor.h"
#include "platform/store/records/gpio.h"
#include "platform/store/records/motiond.h"

namespace camera {
namespace {

struct Motion {
  MotionSettings motiond;
  GpioSettings gpio;
  bool hasPir;
};

bool hasPir(const Motion& motion) {
  return motion.hasPir;
}

// A new mask must have the stored one's length, which depends on the picture's grid.
Bounds maskLength(const Motion& motion) {
  const int length = static_cast<int>(std::strlen(motion.motiond.mbmask));
  return {length, length};
}

constexpr auto kParams =
    paramRows<Motion>(choiceParam<&Motion::motiond, &MotionSettings::enable>("enable", kNoYes),
                      textParam<&Motion::motiond, &MotionSettings::mbmask>("mbmask", "", kHexDigits)
                          .within<maskLength>("as many hexadecimal digits as the stored mask has"),
                      integerParam<&Motion::motiond, &MotionSettings::sensitivity>("sensitivity"),
                      choiceParam<&Motion::gpio, &GpioSettings::pir>("pir", kNoYes).onlyIf<hasPir>(),
                      integerParam<&Motion::motiond, &MotionSettings::pir_sensitivity>("pir_sensitivity")
                          .saying("0, 50 or 100"));

bool watchesNothing(std::string_view mask) {
  return mask.find_first_not_of('0') == mask.npos;
}

}  // namespace

class MotionEndpoint final : public StateEndpoint<kParams> {
  int load() override {
    if (const int result = read(state.motiond, state.gpio); result != 200) return result;
    const ProductInfo* info = product();
    if (info == nullptr) return 500;
    state.hasPir = info->has_pir;
    return 200;
  }

  int check(Motion& wanted) override {
    const int result = wanted.motiond.enable != 0 ? checkEnabled(wanted) : 200;
    if (result != 200) return result;
    const int pir = wanted.motiond.pir_sensitivity;
    return pir == 0 || pir == 50 || pir == 100 ? 200 : refuse("pir_sensitivity");
  }

  int checkEnabled(const Motion& wanted) {
    const int displaySystem = displaySystemInUse();
    const DisplayMode* display = displayMode(displaySystem);
    if (display == nullptr) return fail(500, "settings: the display system cannot be read");
    if (!display->detectsMotion)
      return refuse("enable", joined({"must be no in the display system ", kDisplaySystems[displaySystem]}));
    if (watchesNothing(wanted.motiond.mbmask)) return refuse("mbmask", "not all 0 while enable is yes");
    return 200;
  }

  // A change of either record writes both, so that the actions of both run.
  int carryOut(Motion& wanted) override {
    if (differ(state.motiond, wanted.motiond) || differ(state.gpio, wanted.gpio)) {
      write(wanted.motiond);
      write(wanted.gpio);
    }
    return commit();
  }
};

template <>
const Api kApi<MotionEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kEvents,
     .summary = "Motion detection, in the picture and by the infrared sensor.",
     .records = "`motiond`, `gpio`; reads `profile`",
     .dependent = "enable mbmask",
     .params = {{"enable",
                 "Switches motion detection in the picture, which needs a mask that is not all `0`."},
                {"mbmask", "The watched blocks of the picture: a digit for four blocks, a bit for each.",
                 nullptr,
                 "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"
                 "FFFFFFFFF"
                 "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"
                 "FFFFFFFFF"
                 "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"
                 "FFFFFFFFF",
                 "as many hexadecimal digits as the stored mask has (300 in the factory settings)"},
                {"sensitivity", "The sensitivity to motion in the picture."},
                {"pir",
                 "Switches detection by the infrared sensor; without one, any value is ignored and the reply "
                 "leaves it out."},
                {"pir_sensitivity", "The sensitivity of the infrared sensor."}},
     .state = [](const ProductInfo& product) -> const void* {
       static Motion state;
       state = Motion{};
       state.hasPir = product.has_pir;
       return &state;
     },
     .schema = [](std::string_view param, const ProductInfo& /*product*/) -> std::string {
       return param == "pir_sensitivity" ? R"("type":"integer","minimum":0,"maximum":100,"multipleOf":50)"
                                         : "";
     }});
template struct EndpointOf<MotionEndpoint>;

}  // namespace camera
