// The stored settings as far as they show in the picture.
#pragma once

#include <cstdint>

#include "platform/store/records/image.h"
#include "platform/store/records/ir.h"
#include "platform/store/records/osd.h"

namespace camera::picture {

enum class WhiteBalance : std::uint8_t { kAuto, kDisabled, kIndoor, kOutdoor, kFluorescent };

struct Look {
  int width = 640;  // of the profile's picture, in pixels
  int height = 480;
  double aspect = 0.75;  // height by width of the display system's picture
  int frameRate = 15;    // per second
  int quality = 75;      // of the JPEG, 0 to 100

  ImageSettings image{};
  IrSettings ir{};
  OsdSettings osd{};
  // What the numbers in the record image mean depends on the camera.
  WhiteBalance whiteBalance = WhiteBalance::kAuto;
  double longestExposure = 1.0 / 30;  // seconds
  double noiseReduction = 1;          // 0 to 1

  bool hasNightSwitch = true;
  bool hasLeds = true;
  bool isCovered = false;       // by the privacy mode
  std::int64_t localShift = 0;  // the camera's local time minus the system's clock, in milliseconds
};

// What cannot be read has its default. profile: 1 to 4.
Look readLook(int profile);

}  // namespace camera::picture
