// The dynamic DNS client's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct DdnsSettings {
  std::uint8_t enable;               // 0 off, 1 on
  char provider[64] = "velkorddns";  // "velkorddns" or "dyndns"
  char host[64];                     // the name that is kept registered
  char user[64];                     // account at the provider
  char password[64];
  std::uint8_t reserved[3];
};
static_assert(sizeof(DdnsSettings) == 260 && std::is_trivially_copyable_v<DdnsSettings>);
static_assert(offsetof(DdnsSettings, provider) == 1);
static_assert(offsetof(DdnsSettings, host) == 65);
static_assert(offsetof(DdnsSettings, user) == 129);
static_assert(offsetof(DdnsSettings, password) == 193);

}  // namespace camera
