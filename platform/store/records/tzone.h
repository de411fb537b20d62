// The time zone's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "platform/clock/time_zones.h"

namespace camera {

struct TimeZoneSettings {
  std::uint8_t timezone = kUtcTimeZone;  // number 1 to 87, west to east
  std::uint8_t dstenable;                // daylight saving time: 0 no, 1 yes
  std::uint8_t dstauto = 1;              // 1 by the zone's own rules, 0 by the ones below
  char offset[32] = "1:00";              // "1:00"
  char starttime[32] =
      "M3.5.0/02:00";  // "M3.5.0/02:00": month, week (5 last), weekday (0 Sunday), local time
  char stoptime[32] = "M10.5.0/03:00";
};
static_assert(sizeof(TimeZoneSettings) == 99 && std::is_trivially_copyable_v<TimeZoneSettings>);
static_assert(offsetof(TimeZoneSettings, offset) == 3);
static_assert(offsetof(TimeZoneSettings, starttime) == 35);
static_assert(offsetof(TimeZoneSettings, stoptime) == 67);

}  // namespace camera
