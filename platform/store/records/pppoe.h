// The PPPoE client's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct PppoeSettings {
  std::uint8_t enable;  // 0 off, 1 on
  char user[64];
  char password[64];
};
static_assert(sizeof(PppoeSettings) == 129 && std::is_trivially_copyable_v<PppoeSettings>);
static_assert(offsetof(PppoeSettings, user) == 1);
static_assert(offsetof(PppoeSettings, password) == 65);

}  // namespace camera
