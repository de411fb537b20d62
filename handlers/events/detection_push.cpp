// detection_push.cgi: the detections of sound, motion and heat, and what each pushes to clients, in one
// request.
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

constexpr std::size_t kWholePicture = 300;  // digits of a motion mask that watches every block

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

// Watches the whole picture, in a mask of the length that it has.
void watchAll(MotionSettings* motion) {
  char(&mask)[sizeof motion->mbmask] = motion->mbmask;
  setText(mask, std::string(std::min(strnlen(mask, sizeof mask), kWholePicture), 'F'));
}

}  // namespace

class DetectionPushEndpoint final : public StateEndpoint<kParams> {
  int load() override {
    // Nothing of system is reported, but a camera whose store fails is not well. One record that cannot be
    // read keeps none of the others from being read.
    SystemSettings system;
    int failures = 0;
    for (const int result : {read(state.sound), read(state.motion), read(state.gpio), read(system)})
      failures += result != 200 ? 1 : 0;
    const ProductInfo* known = product();
    if (failures > 0 || known == nullptr) return 500;
    state.hasPir = known->has_pir;
    return 200;
  }

  int carryOut(Detections& wanted) override {
    // Switched on again, it is told to the motion detection again.
    const bool startsMotion = given("motion_enable") && wanted.motion.enable != 0;
    if (startsMotion) watchAll(&wanted.motion);
    writeChanged(state.sound, wanted.sound);
    if (startsMotion || differ(state.motion, wanted.motion)) write(wanted.motion);
    writeChanged(state.gpio, wanted.gpio);
    return commit();
  }
};

template void serve<DetectionPushEndpoint>();

}  // namespace camera
