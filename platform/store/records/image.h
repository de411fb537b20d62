// The image sensor's settings record.
#pragma once

#include "platform/store/record.h"

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

template <>
struct Description<ImageSettings> : Describes<ImageSettings, 180> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved0),
      CAMERA_FIELD(160, max_exposure_time),
      CAMERA_FIELD(161, auto_exposure, 0, 1),
      CAMERA_FIELD(162, video_in_format, 0, 4),
      CAMERA_FIELD(163, color, 0, 1),
      CAMERA_FIELD(164, flicker, 0, 2),
      CAMERA_FIELD(165, flip, 0, 1),
      CAMERA_FIELD(166, mirror, 0, 1),
      CAMERA_FIELD(167, brightness, 0, 100),
      CAMERA_FIELD(168, contrast, 0, 100),
      CAMERA_FIELD(169, saturation, 0, 100),
      CAMERA_FIELD(170, hue, 0, 100),
      CAMERA_FIELD(171, white_balance, 0, 4),
      CAMERA_FIELD(172, auto_gain, 0, 2),
      CAMERA_FIELD(173, backlight, 0, 3),
      CAMERA_FIELD(174, sharpness, 0, 100),
      CAMERA_FIELD(175, noise_reduction, 0, 7),
      CAMERA_FIELD(176, backlight_level),
      CAMERA_FIELD(177, reserved1),
      CAMERA_FIELD(178, black_white, 0, 1),
      CAMERA_FIELD(179, reserved2),
  };
};

}  // namespace camera
