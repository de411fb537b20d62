// The dynamic DNS client's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct DdnsSettings {
  std::uint8_t enable;               // 0 off, 1 on
  char provider[64] = "velkorddns";  // "velkorddns" or "dyndns"
  char host[64];                     // the name that is kept registered
  char user[64];                     // account at the provider
  char password[64];
  std::uint8_t reserved[3];
};

template <>
struct Description<DdnsSettings> : Describes<DdnsSettings, 260> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),  CAMERA_FIELD(1, provider, 0, 10),   CAMERA_FIELD(65, host, 0, 36),
      CAMERA_FIELD(129, user, 0, 30), CAMERA_FIELD(193, password, 0, 30), CAMERA_FIELD(257, reserved),
  };
  static constexpr Exceptions kExceptions{.indivisible = true};
};

}  // namespace camera
