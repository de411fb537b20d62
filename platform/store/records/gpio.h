// The digital input and output settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct GpioSettings {
  std::uint8_t pir;  // detection by the infrared sensor: 0 off, 1 on
  std::uint8_t reserved[31];
};

template <>
struct Description<GpioSettings> : Describes<GpioSettings, 32> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, pir, 0, 1),
      CAMERA_FIELD(1, reserved),
  };
};

}  // namespace camera
