// The time zones that the camera knows, and the zone that the stored settings describe.
#pragma once

#include <array>
#include <cstdint>

namespace camera {

struct TimeZoneSettings;

inline constexpr int kTimeZoneCount = 87;
inline constexpr int kUtcTimeZone = 34;  // without daylight saving

// When clocks change: month 1 to 12, week 1 to 5 (5: last), weekday 0 to 6 (0: Sunday), and the local time in
// seconds from midnight at the start of that day, which may be negative or more than a day.
struct ChangeRule {
  std::uint8_t month;
  std::uint8_t week;
  std::uint8_t weekday;
  std::int32_t seconds;
};

struct DaylightRules {
  ChangeRule start;  // by standard time
  ChangeRule stop;   // by daylight saving time
};

// Offsets in minutes.
struct TimeZone {
  std::int16_t east;              // standard time minus UTC
  const DaylightRules* daylight;  // the region's own; null without daylight saving
  std::int16_t saving = 60;       // daylight saving time minus standard time
};

// From west to east; zone number n is entry n - 1. The numbers are stored: no entry may ever move.
extern const std::array<TimeZone, kTimeZoneCount> kTimeZones;

// The zone that the stored settings describe: offsets from UTC in seconds.
struct LocalZone {
  std::int32_t standard;
  std::int32_t saving;  // 0 without daylight saving
  DaylightRules daylight;
};

// Malformed daylight saving rules, or an offset of more than two hours, result in standard time only.
LocalZone localZone(const TimeZoneSettings& setting);

// Local time minus UTC at that instant, in seconds.
std::int32_t offsetAt(const LocalZone& zone, std::int64_t instant);

}  // namespace camera
