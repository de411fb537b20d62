// The on-screen display's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _osd_setting {
  std::uint8_t enable;    // 0 off, 1 on
  std::uint8_t showtime;  // 0 off, 1 on
  char label[34];
};
static_assert(sizeof(_osd_setting) == 36 && std::is_trivially_copyable_v<_osd_setting>);
static_assert(offsetof(_osd_setting, label) == 2);
