// The network time client's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct NtpSettings {
  std::uint8_t method;  // 0 the clock is set by hand, 1 from the server
  std::uint8_t reserved;
  char timeserver[64];
};

template <>
struct Description<NtpSettings> : Describes<NtpSettings, 66> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, method, 0, 1),
      CAMERA_FIELD(1, reserved),
      CAMERA_FIELD(2, timeserver, 0, 60),
  };
  static constexpr Exceptions kExceptions{.indivisible = true};
};

}  // namespace camera
