// The mail account's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

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
static_assert(sizeof(SmtpSettings) == 384 && std::is_trivially_copyable_v<SmtpSettings>);
static_assert(offsetof(SmtpSettings, port) == 4);
static_assert(offsetof(SmtpSettings, host) == 8);
static_assert(offsetof(SmtpSettings, user) == 72);
static_assert(offsetof(SmtpSettings, pass) == 136);
static_assert(offsetof(SmtpSettings, sender) == 200);
static_assert(offsetof(SmtpSettings, to) == 264);

}  // namespace camera
