// The PPPoE client's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct PppoeSettings {
  std::uint8_t enable;  // 0 off, 1 on
  char user[64];
  char password[64];
};

template <>
struct Description<PppoeSettings> : Describes<PppoeSettings, 129> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),
      CAMERA_FIELD(1, user, 0, 32),
      CAMERA_FIELD(65, password, 0, 60),
  };
  static constexpr Exceptions kExceptions{.indivisible = true};
};

}  // namespace camera
