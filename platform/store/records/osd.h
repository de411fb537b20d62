// The on-screen display's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct OsdSettings {
  std::uint8_t enable;    // 0 off, 1 on
  std::uint8_t showtime;  // 0 off, 1 on
  char label[34];
};

template <>
struct Description<OsdSettings> : Describes<OsdSettings, 36> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),
      CAMERA_FIELD(1, showtime, 0, 1),
      CAMERA_FIELD(2, label, 0, 30),
  };
};

}  // namespace camera
