// The wired network's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _lan_setting {
  std::uint8_t dhcp;  // 0 static addressing, 1 address by DHCP
  char ip[16];        // static IPv4 address, dotted decimal
  char netmask[16];
  char gateway[16];
  char dns1[16];  // DNS servers; empty: none
  char dns2[16];
  std::uint8_t reserved[3];
};
static_assert(sizeof(_lan_setting) == 84 && std::is_trivially_copyable_v<_lan_setting>);
static_assert(offsetof(_lan_setting, ip) == 1);
static_assert(offsetof(_lan_setting, netmask) == 17);
static_assert(offsetof(_lan_setting, gateway) == 33);
static_assert(offsetof(_lan_setting, dns1) == 49);
static_assert(offsetof(_lan_setting, dns2) == 65);
