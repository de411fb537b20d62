// The wired network's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct LanSettings {
  std::uint8_t dhcp = 1;         // 0 static addressing, 1 address by DHCP
  char ip[16] = "192.168.0.20";  // static IPv4 address, dotted decimal
  char netmask[16] = "255.255.255.0";
  char gateway[16] = "192.168.0.1";
  char dns1[16];  // DNS servers; empty: none
  char dns2[16];
  std::uint8_t reserved[3];
};

template <>
struct Description<LanSettings> : Describes<LanSettings, 84> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, dhcp, 0, 1),      CAMERA_FIELD(1, ip, 1, 15),    CAMERA_FIELD(17, netmask, 1, 15),
      CAMERA_FIELD(33, gateway, 1, 15), CAMERA_FIELD(49, dns1, 0, 15), CAMERA_FIELD(65, dns2, 0, 15),
      CAMERA_FIELD(81, reserved),
  };
};

}  // namespace camera
