// The dynamic DNS client's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _ddns_setting {
  std::uint8_t enable;  // 0 off, 1 on
  char provider[64];    // "velkorddns" or "dyndns"
  char host[64];        // the name that is kept registered
  char user[64];        // account at the provider
  char password[64];
  std::uint8_t reserved[3];
};
static_assert(sizeof(_ddns_setting) == 260 && std::is_trivially_copyable_v<_ddns_setting>);
static_assert(offsetof(_ddns_setting, provider) == 1);
static_assert(offsetof(_ddns_setting, host) == 65);
static_assert(offsetof(_ddns_setting, user) == 129);
static_assert(offsetof(_ddns_setting, password) == 193);
