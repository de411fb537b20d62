// The mail account's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct SmtpSettings {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t reserved0[3];
  std::int32_t port = 25;
  char host[64];  // the server; empty: none was set
  char user[64];
  char pass[64];    // in plain text
  char sender[64];  // an address
  char to[64];      // addresses
  std::uint8_t reserved1[56];
};

template <>
struct Description<SmtpSettings> : Describes<SmtpSettings, 384> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),    CAMERA_FIELD(1, reserved0),    CAMERA_FIELD(4, port, 1, 65535),
      CAMERA_FIELD(8, host, 0, 60),     CAMERA_FIELD(72, user, 0, 30), CAMERA_FIELD(136, pass, 0, 30),
      CAMERA_FIELD(200, sender, 0, 60), CAMERA_FIELD(264, to, 0, 60),  CAMERA_FIELD(328, reserved1),
  };
};

}  // namespace camera
