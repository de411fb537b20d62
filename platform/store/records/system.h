// What the firmware says of itself; no endpoint changes it.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct SystemSettings {
  std::uint8_t reserved[32];
  char version[32] = "1.0.0";
  char model[160] = "IPCAM";
  char brand[128] = "Camera";
  char product[160] = "Network Camera";
  char build[40] = "1";
};

template <>
struct Description<SystemSettings> : Describes<SystemSettings, 552> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved), CAMERA_FIELD(32, version),  CAMERA_FIELD(64, model),
      CAMERA_FIELD(224, brand),  CAMERA_FIELD(352, product), CAMERA_FIELD(512, build),
  };
};

}  // namespace camera
