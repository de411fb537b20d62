// The image sensor's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _image_setting {
  std::uint8_t reserved0[160];
  std::uint8_t max_exposure_time;  // position in the list of exposure times
  std::uint8_t auto_exposure;      // 0 no, 1 yes
  std::uint8_t video_in_format;    // 0 auto, 1 NTSC, 2 PAL, 3 PAL-M, 4 PAL-N
  std::uint8_t color;              // 0 no, 1 yes
  std::uint8_t flicker;            // 0 auto, 1 50 Hz, 2 60 Hz
  std::uint8_t flip;               // 0 off, 1 on
  std::uint8_t mirror;             // 0 off, 1 on
  std::uint8_t brightness;
  std::uint8_t contrast;
  std::uint8_t saturation;
  std::uint8_t hue;
  std::uint8_t white_balance;  // position in the sensor's list
  std::uint8_t auto_gain;      // 0 off; the sensor may know more than one level
  std::uint8_t backlight;      // 0 off; the sensor may know more than one level
  std::uint8_t sharpness;
  std::uint8_t noise_reduction;  // position in the sensor's list
  std::uint8_t backlight_level;
  std::uint8_t reserved1;
  std::uint8_t black_white;  // 0 colour, 1 black and white
  std::uint8_t reserved2;
};
static_assert(sizeof(_image_setting) == 180 && std::is_trivially_copyable_v<_image_setting>);
static_assert(offsetof(_image_setting, max_exposure_time) == 160);
static_assert(offsetof(_image_setting, brightness) == 167);
static_assert(offsetof(_image_setting, backlight_level) == 176);
static_assert(offsetof(_image_setting, black_white) == 178);
