// The wireless client's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct WirelessSettings {
  std::uint8_t enable;         // 0 off, 1 on
  std::uint8_t mode;           // 0 managed, 1 ad-hoc
  std::uint8_t auth;           // 0 open, 1 shared, 2 WPA-PSK, 5 WPA2-PSK, 6 open or shared with WEP
  std::uint8_t encryption;     // 0 none, 1 WEP, 2 TKIP, 3 AES
  std::int32_t channel = 1;    // used in ad-hoc mode
  char essid[64] = "default";  // network name, 1 to 32 bytes
  char key[68];                // WEP key or WPA passphrase, up to 64 bytes
};
static_assert(sizeof(WirelessSettings) == 140 && std::is_trivially_copyable_v<WirelessSettings>);
static_assert(offsetof(WirelessSettings, channel) == 4);
static_assert(offsetof(WirelessSettings, essid) == 8);
static_assert(offsetof(WirelessSettings, key) == 72);

}  // namespace camera
