// Calendar dates and times of day over 64-bit seconds: libc's would bring its time zone files and its scanf
// along.
#pragma once

#include <cstdint>

namespace camera {

// A date of the Gregorian calendar and a time of day, as clocks and people show them.
struct CivilTime {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31
  int hour;
  int minute;
  int second;
};

// Of seconds since 1970-01-01 00:00:00, of the same clock; years -32767 to 32767.
CivilTime civilTime(std::int64_t seconds);

// False for a date that no calendar has or a time that no clock shows.
bool isCivilTime(const CivilTime& time);

// The inverse of civilTime.
std::int64_t secondsOf(const CivilTime& time);

// Midnight of the week-th (5: the last) such weekday (0: Sunday) of the month, in seconds.
std::int64_t secondsOfWeekday(int year, int month, int week, int weekday);

}  // namespace camera
