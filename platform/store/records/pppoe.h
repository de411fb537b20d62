// The PPPoE client's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _pppoe_setting {
  std::uint8_t enable;  // 0 off, 1 on
  char user[64];
  char password[64];
};
static_assert(sizeof(_pppoe_setting) == 129 && std::is_trivially_copyable_v<_pppoe_setting>);
static_assert(offsetof(_pppoe_setting, user) == 1);
static_assert(offsetof(_pppoe_setting, password) == 65);
