// The recording's settings record; no endpoint changes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _record_setting {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t reserved0[15];
  std::uint8_t format_while_recording;  // other than 0: the card may be formatted although recording is on
  std::uint8_t reserved1[15];
};
static_assert(sizeof(_record_setting) == 32 && std::is_trivially_copyable_v<_record_setting>);
static_assert(offsetof(_record_setting, format_while_recording) == 16);
