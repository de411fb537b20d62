// The names that the user gave the camera.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct HostSettings {
  char name[68] = "Camera";
  char location[64];
};

template <>
struct Description<HostSettings> : Describes<HostSettings, 132> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, name, 1, 36),
      CAMERA_FIELD(68, location, 0, 60),
  };
};

}  // namespace camera
