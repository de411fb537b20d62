// The privacy mode's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct PrivacySettings {
  std::uint8_t reserved0;
  std::uint8_t enable;  // 0 no, 1 yes
  std::uint8_t manual;  // switched on by hand: 0 off, 1 on
  std::uint8_t reserved1;
};

template <>
struct Description<PrivacySettings> : Describes<PrivacySettings, 4> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved0),
      CAMERA_FIELD(1, enable, 0, 1),
      CAMERA_FIELD(2, manual, 0, 1),
      CAMERA_FIELD(3, reserved1),
  };
};

}  // namespace camera
