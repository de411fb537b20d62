// The FTP upload's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

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
static_assert(sizeof(FtpSettings) == 256 && std::is_trivially_copyable_v<FtpSettings>);
static_assert(offsetof(FtpSettings, port) == 4);
static_assert(offsetof(FtpSettings, interval) == 8);
static_assert(offsetof(FtpSettings, user) == 12);
static_assert(offsetof(FtpSettings, pass) == 44);
static_assert(offsetof(FtpSettings, prefix) == 76);
static_assert(offsetof(FtpSettings, host) == 108);
static_assert(offsetof(FtpSettings, path) == 172);

}  // namespace camera
