// The mail account's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _smtp_setting {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t reserved0[3];
  std::int32_t port;
  char host[64];  // the server; empty: none was set
  char user[64];
  char pass[64];    // in plain text
  char sender[64];  // an address
  char to[64];      // addresses
  std::uint8_t reserved1[56];
};
static_assert(sizeof(_smtp_setting) == 384 && std::is_trivially_copyable_v<_smtp_setting>);
static_assert(offsetof(_smtp_setting, port) == 4);
static_assert(offsetof(_smtp_setting, host) == 8);
static_assert(offsetof(_smtp_setting, user) == 72);
static_assert(offsetof(_smtp_setting, pass) == 136);
static_assert(offsetof(_smtp_setting, sender) == 200);
static_assert(offsetof(_smtp_setting, to) == 264);
