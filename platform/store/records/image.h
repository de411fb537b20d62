// The image sensor's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct ImageSettings {
  std::uint8_t reserved0[160];
  std::uint8_t max_exposure_time;  // position in the list of exposure times
  std::uint8_t auto_exposure = 1;  // 0 no, 1 yes
  std::uint8_t video_in_format;    // 0 auto, 1 NTSC, 2 PAL, 3 PAL-M, 4 PAL-N
  std::uint8_t color = 1;          // 0 no, 1 yes
  std::uint8_t flicker = 1;        // 0 auto, 1 50 Hz, 2 60 Hz
  std::uint8_t flip;               // 0 off, 1 on
  std::uint8_t mirror;             // 0 off, 1 on
  std::uint8_t brightness = 50;
  std::uint8_t contrast = 50;
  std::uint8_t saturation = 50;
  std::uint8_t hue = 50;
  std::uint8_t white_balance = 1;  // position in the sensor's list
  std::uint8_t auto_gain = 1;      // 0 off; the sensor may know more than one level
  std::uint8_t backlight;          // 0 off; the sensor may know more than one level
  std::uint8_t sharpness = 60;
  std::uint8_t noise_reduction = 1;  // position in the sensor's list
  std::uint8_t backlight_level;
  std::uint8_t reserved1;
  std::uint8_t black_white;  // 0 colour, 1 black and white
  std::uint8_t reserved2;
};
static_assert(sizeof(ImageSettings) == 180 && std::is_trivially_copyable_v<ImageSettings>);
static_assert(offsetof(ImageSettings, max_exposure_time) == 160);
static_assert(offsetof(ImageSettings, brightness) == 167);
static_assert(offsetof(ImageSettings, backlight_level) == 176);
static_assert(offsetof(ImageSettings, black_white) == 178);

}  // namespace camera
