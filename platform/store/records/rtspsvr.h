// The RTSP server's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct RtspServerSettings {
  std::uint8_t reserved0[4];
  std::int32_t rtsp_port = 554;
  std::uint8_t reserved1;
  // The stream paths of the video profiles 1 to 4.
  char urlentry[4][32] = {"live1", "live2", "live3", "live4"};
  std::uint8_t reserved2[75];
};

template <>
struct Description<RtspServerSettings> : Describes<RtspServerSettings, 212> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved0),       CAMERA_FIELD(4, rtsp_port, 1, 65535), CAMERA_FIELD(8, reserved1),
      CAMERA_FIELD(9, urlentry, 1, 15), CAMERA_FIELD(137, reserved2),
  };
  static constexpr Exceptions kExceptions{.dependsOn = recordBit(RecordIndex::httpsvr)};
};

}  // namespace camera
