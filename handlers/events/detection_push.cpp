// detection_push.cgi: sound, motion and infrared detection, and which of them are pushed to clients.
#include <algorithm>

#include "handlers/endpoint.h"
#include "platform/store/records/audiodetection.h"
#include "platform/store/records/gpio.h"
#include "platform/store/records/motiond.h"
#include "platform/store/records/system.h"

namespace camera {
namespace {

struct Detections {
  AudioDetectionSettings sound;
  MotionSettings motion;
  GpioSettings gpio;
  bool hasPir;
};

constexpr std::size_t kWholePicture = 300;  // digits of a motion mask for the whole picture

bool hasPir(const Detections& detections) {
  return detections.hasPir;
}

// The digits at the start count: "55abc" is 55, and "abc" is 0. A value with a NUL is rejected.
template <int kStep, auto... kPath>
constexpr auto leadingNumberParam(const char* name, const char* accepted) {
  auto row = paramRow<kPath...>(name, ParamKind::kOwn).storingNumber().saying(accepted);
  row.take = [](std::string_view value, void* state) {
    using Field = params::ValueOf<kPath...>;
    const Bounds bounds = params::recordBounds<kPath...>();
    const int number = leadingInteger(value);
    if (number < bounds.min || number > bounds.max || number % kStep != 0 || value.find('\0') != value.npos)
      return false;
    *static_cast<Field*>(params::locate<Detections, kPath...>(state)) = static_cast<Field>(number);
    return true;
  };
  return row;
}

constexpr auto kParams = paramRows<Detections>(
    choiceParam<&Detections::sound, &AudioDetectionSettings::enable>("sound_enable", kNoYes),
    leadingNumberParam<5, &Detections::sound, &AudioDetectionSettings::sensitivity>(
        "sound_sensitivity", "50 to 90, a multiple of 5"),
    choiceParam<&Detections::sound, &AudioDetectionSettings::push>("sound_push", kNoYes),
    choiceParam<&Detections::motion, &MotionSettings::enable>("motion_enable", kNoYes),
    leadingNumberParam<1, &Detections::motion, &MotionSettings::sensitivity>("motion_sensitivity",
                                                                             "0 to 100"),
    choiceParam<&Detections::motion, &MotionSettings::push>("motion_push", kNoYes),
    choiceParam<&Detections::gpio, &GpioSettings::pir>("pir_enable", kNoYes).onlyIf<hasPir>(),
    leadingNumberParam<50, &Detections::motion, &MotionSettings::pir_sensitivity>("pir_sensitivity",
                                                                                  "0, 50 or 100")
        .onlyIf<hasPir>());

// Watches the whole picture. The mask keeps its length, up to kWholePicture.
void watchAll(MotionSettings* motion) {
  char(&mask)[sizeof motion->mbmask] = motion->mbmask;
  setText(mask, std::string(std::min(strnlen(mask, sizeof mask), kWholePicture), 'F'));
}

}  // namespace

class DetectionPushEndpoint final : public StateEndpoint<kParams> {
  int load() override {
    SystemSettings system;  // read only so that a broken store is reported as 500
    // Each is read even after a failure, so that the log names every broken record.
    const int results[] = {read(state.sound), read(state.motion), read(state.gpio), read(system)};
    const ProductInfo* info = product();
    if (info == nullptr || std::count(std::begin(results), std::end(results), 200) != std::ssize(results))
      return 500;
    state.hasPir = info->has_pir;
    return 200;
  }

  int carryOut(Detections& wanted) override {
    // Written even if it is on already, so that the actions of motiond run again.
    const bool startsMotion = given("motion_enable") && wanted.motion.enable != 0;
    if (startsMotion) watchAll(&wanted.motion);
    writeChanged(state.sound, wanted.sound);
    if (startsMotion || differ(state.motion, wanted.motion)) write(wanted.motion);
    writeChanged(state.gpio, wanted.gpio);
    return commit();
  }
};

template <>
const Api kApi<DetectionPushEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kEvents,
     .summary = "Sound detection, motion detection and the infrared sensor in one request, and which of them "
                "is pushed to clients.",
     .records = "`audiodetection`, `motiond`, `gpio`; reads `system`",
     .lenient = "sound_sensitivity motion_sensitivity pir_sensitivity",
     .params = {{"sound_enable", "Switches the detection of sounds."},
                {"sound_sensitivity", "The sensitivity to sounds."},
                {"sound_push", "Switches the push of a detected sound to clients."},
                {"motion_enable",
                 "Switches motion detection in the picture; `yes` sets the mask to the whole picture."},
                {"motion_sensitivity", "The sensitivity to motion in the picture."},
                {"motion_push", "Switches the push of detected motion to clients."},
                {"pir_enable",
                 "Switches detection by the infrared sensor; without one, any value is ignored and the reply "
                 "leaves it out."},
                {"pir_sensitivity",
                 "The sensitivity of the infrared sensor; without one, any value is ignored and the reply "
                 "leaves it out."}},
     .state = [](const ProductInfo& product) -> const void* {
       static Detections state;
       state = Detections{};
       state.hasPir = product.has_pir;
       return &state;
     },
     .schema = [](std::string_view param, const ProductInfo& product) -> std::string {
       if (param == "sound_sensitivity")
         return R"("type":"integer","minimum":50,"maximum":90,"multipleOf":5)";
       if (param == "motion_sensitivity") return R"("type":"integer","minimum":0,"maximum":100)";
       if (param != "pir_sensitivity") return {};
       return product.has_pir ? R"("type":"integer","minimum":0,"maximum":100,"multipleOf":50)" : "-";
     }});
template struct EndpointOf<DetectionPushEndpoint>;

}  // namespace camera
