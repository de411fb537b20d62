// The UPnP port mapping's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct UpnpSettings {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t reserved0[3];
  std::int32_t http_external_port = 80;  // ports of the router; they must differ
  std::uint8_t reserved1[4];
  std::int32_t rtsp_external_port = 554;
  std::uint8_t reserved2[16];
};

template <>
struct Description<UpnpSettings> : Describes<UpnpSettings, 32> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),
      CAMERA_FIELD(1, reserved0),
      CAMERA_FIELD(4, http_external_port, 1, 65535),
      CAMERA_FIELD(8, reserved1),
      CAMERA_FIELD(12, rtsp_external_port, 1, 65535),
      CAMERA_FIELD(16, reserved2),
  };
  static constexpr Exceptions kExceptions{.indivisible = true};
};

}  // namespace camera
