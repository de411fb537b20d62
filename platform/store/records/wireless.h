// The wireless client's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct WirelessSettings {
  std::uint8_t enable;         // 0 off, 1 on
  std::uint8_t mode;           // 0 managed, 1 ad-hoc
  std::uint8_t auth;           // 0 open, 1 shared, 2 WPA-PSK, 5 WPA2-PSK, 6 open or shared with WEP
  std::uint8_t encryption;     // 0 none, 1 WEP, 2 TKIP, 3 AES
  std::int32_t channel = 1;    // used in ad-hoc mode
  char essid[64] = "default";  // network name
  char key[68];                // WEP key or WPA passphrase
};

template <>
struct Description<WirelessSettings> : Describes<WirelessSettings, 140> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),     CAMERA_FIELD(1, mode, 0, 1),     CAMERA_FIELD(2, auth, 0, 6),
      CAMERA_FIELD(3, encryption, 0, 3), CAMERA_FIELD(4, channel, 1, 14), CAMERA_FIELD(8, essid, 1, 32),
      CAMERA_FIELD(72, key, 0, 64),
  };
  static constexpr Exceptions kExceptions{.indivisible = true};
};

}  // namespace camera
