// The time zone's settings record.
#pragma once

#include "platform/clock/time_zones.h"
#include "platform/store/record.h"

namespace camera {

struct TimeZoneSettings {
  std::uint8_t timezone = kUtcTimeZone;  // number 1 to 87, west to east
  std::uint8_t dstenable;                // daylight saving time: 0 no, 1 yes
  std::uint8_t dstauto = 1;              // 1 by the zone's own rules, 0 by those below
  char offset[32] = "1:00";              // hours and minutes
  char starttime[32] = "M3.5.0/02:00";   // month, week (5: last), weekday (0: Sunday), local time
  char stoptime[32] = "M10.5.0/03:00";
};

template <>
struct Description<TimeZoneSettings> : Describes<TimeZoneSettings, 99> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, timezone, 1, kTimeZoneCount),
      CAMERA_FIELD(1, dstenable, 0, 1),
      CAMERA_FIELD(2, dstauto, 0, 1),
      CAMERA_FIELD(3, offset),
      CAMERA_FIELD(35, starttime),
      CAMERA_FIELD(67, stoptime),
  };
};

}  // namespace camera
