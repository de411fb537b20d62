// The sound detection's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct AudioDetectionSettings {
  std::uint8_t enable;            // 0 off, 1 on
  std::uint8_t sensitivity = 70;  // in steps of 5
  std::uint8_t push;              // push notification on detected sound: 0 off, 1 on
};

template <>
struct Description<AudioDetectionSettings> : Describes<AudioDetectionSettings, 3> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),
      CAMERA_FIELD(1, sensitivity, 50, 90),
      CAMERA_FIELD(2, push, 0, 1),
  };
};

}  // namespace camera
