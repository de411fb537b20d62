// The motion detection's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct MotionSettings {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t sensitivity = 50;
  std::uint8_t push;  // push notification on detected motion: 0 off, 1 on
  // The watched blocks of the picture, one hexadecimal digit for four blocks. The factory mask watches none.
  char mbmask[512] =
      "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
      "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
      "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000";
  std::uint8_t reserved;
  std::int32_t pir_sensitivity = 50;  // of the infrared sensor: 0, 50 or 100
};

template <>
struct Description<MotionSettings> : Describes<MotionSettings, 520> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1), CAMERA_FIELD(1, sensitivity, 0, 100),
      CAMERA_FIELD(2, push, 0, 1),   CAMERA_FIELD(3, mbmask, 0, 511),
      CAMERA_FIELD(515, reserved),   CAMERA_FIELD(516, pir_sensitivity, 0, 100),
  };
  // Motion cannot be detected in some display systems, so the two records depend on each other.
  static constexpr Exceptions kExceptions{.dependsOn = recordBit(RecordIndex::profile)};
};

}  // namespace camera
