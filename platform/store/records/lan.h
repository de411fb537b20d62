// The wired network's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

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
static_assert(sizeof(LanSettings) == 84 && std::is_trivially_copyable_v<LanSettings>);
static_assert(offsetof(LanSettings, ip) == 1);
static_assert(offsetof(LanSettings, netmask) == 17);
static_assert(offsetof(LanSettings, gateway) == 33);
static_assert(offsetof(LanSettings, dns1) == 49);
static_assert(offsetof(LanSettings, dns2) == 65);

}  // namespace camera
