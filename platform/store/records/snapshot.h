// The snapshots' settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct SnapshotSettings {
  std::uint8_t reserved0;
  std::uint8_t ftp_enable;  // snapshots go to the FTP server: 0 no, 1 yes
  std::uint8_t reserved1[30];
};

template <>
struct Description<SnapshotSettings> : Describes<SnapshotSettings, 32> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved0),
      CAMERA_FIELD(1, ftp_enable, 0, 1),
      CAMERA_FIELD(2, reserved1),
  };
};

}  // namespace camera
