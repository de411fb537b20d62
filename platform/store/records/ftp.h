// The FTP upload's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct FtpSettings {
  std::uint8_t enable;       // 0 off, 1 on
  std::uint8_t passive = 1;  // 0 active mode, 1 passive mode
  std::uint8_t reserved0[2];
  std::int32_t port = 21;
  std::int32_t interval = 60000;  // between uploads, in milliseconds
  char user[32];
  char pass[32];    // in plain text
  char prefix[32];  // of the names of uploaded files
  char host[64];    // the server; empty: none was set
  char path[64];    // the remote folder
  std::uint8_t reserved1[20];
};

template <>
struct Description<FtpSettings> : Describes<FtpSettings, 256> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),
      CAMERA_FIELD(1, passive, 0, 1),
      CAMERA_FIELD(2, reserved0),
      CAMERA_FIELD(4, port, 1, 65535),
      CAMERA_FIELD(8, interval, 10000, 86400000),
      CAMERA_FIELD(12, user, 0, 30),
      CAMERA_FIELD(44, pass, 0, 30),
      CAMERA_FIELD(76, prefix, 0, 30),
      CAMERA_FIELD(108, host, 0, 60),
      CAMERA_FIELD(172, path, 0, 30),
      CAMERA_FIELD(236, reserved1),
  };
};

}  // namespace camera
