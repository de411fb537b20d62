// The night vision's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct IrSettings {
  std::uint8_t icr_mode;  // day/night switch: 0 auto, 1 manual, 2 day, 3 night
  std::uint8_t ir_led;    // infrared LEDs: 0 off, 1 on; follows the switch in its day and night modes
  std::uint8_t reserved[2];
};

template <>
struct Description<IrSettings> : Describes<IrSettings, 4> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, icr_mode, 0, 3),
      CAMERA_FIELD(1, ir_led, 0, 1),
      CAMERA_FIELD(2, reserved),
  };
  static constexpr Exceptions kExceptions{.indivisible = true};
};

}  // namespace camera
