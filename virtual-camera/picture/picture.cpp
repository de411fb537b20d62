// Decides how the camera exposes and develops a picture.
#include "virtual-camera/picture/picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "framework/utf8.h"
#include "platform/clock/calendar.h"
#include "platform/text.h"
#include "virtual-camera/picture/caption.h"
#include "virtual-camera/picture/effects.h"

namespace camera::picture {
namespace {

constexpr double kDusk = 0.3;                // below this daylight the automatic switch changes to night
constexpr double kUsualExposure = 1.0 / 30;  // seconds
constexpr double kMostGain = 2;

struct Tint {
  double blue, red;
};
constexpr Tint kTints[] = {{0, 0}, {-7, 4}, {22, -14}, {-3, 2}, {7, 9}};  // by WhiteBalance

struct Night {
  bool hasFilter;  // the infrared filter, without which there are no colours
  bool areLedsOn;
};

Night nightOf(const Look& look, std::int64_t instant) {
  enum Switch : std::uint8_t { kAuto, kManual, kDay };
  const bool isDark = daylight(instant) < kDusk;
  const int position = look.hasNightSwitch ? look.ir.icr_mode : int{kDay};
  const bool leds = look.hasLeds && (position == kAuto ? isDark : look.ir.ir_led != 0);
  if (position == kAuto) return {!isDark, leds};
  return {position == kManual ? !leds : position == kDay, leds};
}

struct Exposure {
  double seconds;
  double factor;  // of all light
  double gain;
};

// A long exposure makes a dark picture brighter, and what moves blurred; gain makes it brighter and noisy.
Exposure expose(const Look& look, double light) {
  const double need = 1 / light;
  const double most = std::sqrt(look.longestExposure / kUsualExposure);
  const bool isAuto = look.image.auto_exposure != 0;
  const double factor = isAuto ? std::min(need, most * 1.5) : most;
  const double gain = look.image.auto_gain != 0 ? std::clamp(need / factor, 1.0, kMostGain) : 1;
  const double seconds = isAuto ? look.longestExposure * std::min(1.0, need / 8) : look.longestExposure;
  return {seconds, factor * gain, gain};
}

double around(int setting) {
  return (setting - 50) / 50.0;
}

Tone toneOf(const Look& look, const Exposure& exposure, bool hasColor, std::int64_t instant) {
  const Tint& tint = kTints[static_cast<std::size_t>(look.whiteBalance)];
  const ImageSettings& image = look.image;
  Tone tone;
  tone.exposure = exposure.factor;
  tone.shadows = std::max(image.backlight / 3.0, image.backlight_level / 255.0);
  tone.brightness = 80 * around(image.brightness);
  tone.contrast = 1 + 0.65 * around(image.contrast);
  tone.saturation = hasColor ? 1 + around(image.saturation) : 0;
  tone.hue = std::numbers::pi / 3 * around(image.hue);
  tone.blue = hasColor ? tint.blue : 0;
  tone.red = hasColor ? tint.red : 0;
  tone.sharpness = (image.sharpness > 50 ? 1.6 : 1) * around(image.sharpness) - 0.15 * look.noiseReduction;
  tone.noise = (1 + 10 * (exposure.gain - 1)) * (1 - 0.6 * look.noiseReduction);
  tone.seed = static_cast<std::uint32_t>(instant);
  return tone;
}

std::string captionOf(const OsdSettings& osd, std::int64_t instant) {
  if (osd.enable == 0) return {};
  std::string text = decodeUtf8(textOf(osd.label));
  std::replace_if(text.begin(), text.end(), isControl, ' ');
  if (osd.showtime == 0) return text;
  const CivilTime t = civilTime(instant / 1000);
  std::array<char, 64> time;
  (void)std::snprintf(time.data(), time.size(), "%s%04d-%02d-%02d %02d:%02d:%02d", text.empty() ? "" : "  ",
                      t.year, t.month, t.day, t.hour, t.minute, t.second);
  return text + time.data();
}

}  // namespace

Frame take(const Look& look, const Moment& moment, Scene* scene) {
  Frame frame(look.width, look.height);
  if (!look.isCovered) {
    const Night night = nightOf(look, moment.instant);
    View view{.width = look.width,
              .height = look.height,
              .aspect = look.aspect,
              .pan = static_cast<double>(moment.pan),
              .tilt = static_cast<double>(moment.tilt),
              .mirror = look.image.mirror != 0,
              .flip = look.image.flip != 0,
              .isLit = night.areLedsOn,
              .motion = moment.motion,
              .instant = moment.instant};
    const bool hasColor = night.hasFilter && look.image.color != 0 && look.image.black_white == 0;
    const Exposure exposure = expose(look, brightnessOf(view));
    view.exposure = exposure.seconds;
    develop(scene->draw(view), toneOf(look, exposure, hasColor, moment.instant), &frame);
  }
  writeCaption(captionOf(look.osd, moment.instant), &frame);
  return frame;
}

}  // namespace camera::picture
