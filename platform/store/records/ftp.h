// The FTP upload's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _ftp_setting {
  std::uint8_t enable;   // 0 off, 1 on
  std::uint8_t passive;  // 0 active mode, 1 passive mode
  std::uint8_t reserved0[2];
  std::int32_t port;
  std::int32_t interval;  // between uploads, in milliseconds
  char user[32];
  char pass[32];    // in plain text
  char prefix[32];  // of the names of uploaded files
  char host[64];    // the server; empty: none was set
  char path[64];    // the remote folder
  std::uint8_t reserved1[20];
};
static_assert(sizeof(_ftp_setting) == 256 && std::is_trivially_copyable_v<_ftp_setting>);
static_assert(offsetof(_ftp_setting, port) == 4);
static_assert(offsetof(_ftp_setting, interval) == 8);
static_assert(offsetof(_ftp_setting, user) == 12);
static_assert(offsetof(_ftp_setting, pass) == 44);
static_assert(offsetof(_ftp_setting, prefix) == 76);
static_assert(offsetof(_ftp_setting, host) == 108);
static_assert(offsetof(_ftp_setting, path) == 172);
