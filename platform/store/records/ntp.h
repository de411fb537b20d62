// The network time client's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _ntp_setting {
  std::uint8_t method;  // 0 the clock is set by hand, 1 from the server
  std::uint8_t reserved;
  char timeserver[64];
};
static_assert(sizeof(_ntp_setting) == 66 && std::is_trivially_copyable_v<_ntp_setting>);
static_assert(offsetof(_ntp_setting, timeserver) == 2);
