// The time zone's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _tzone_setting {
  std::uint8_t timezone;   // number 1 to 87, west to east
  std::uint8_t dstenable;  // daylight saving time: 0 no, 1 yes
  std::uint8_t dstauto;    // 1 by the zone's own rules, 0 by the ones below
  char offset[32];         // "1:00"
  char starttime[32];      // "M3.5.0/02:00": month, week (5 last), weekday (0 Sunday), local time
  char stoptime[32];
};
static_assert(sizeof(_tzone_setting) == 99 && std::is_trivially_copyable_v<_tzone_setting>);
static_assert(offsetof(_tzone_setting, offset) == 3);
static_assert(offsetof(_tzone_setting, starttime) == 35);
static_assert(offsetof(_tzone_setting, stoptime) == 67);
