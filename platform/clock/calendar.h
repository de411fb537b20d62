// Converts dates and times of day to and from 64-bit seconds. libc's functions would link its time zones and
// scanf.
#pragma once

#include <cstdint>

namespace camera {

// A date of the Gregorian calendar and a time of day.
struct CivilTime {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31
  int hour;
  int minute;
  int second;
};

// The date and time that many seconds after 1970-01-01 00:00:00 on the same clock; years -32767 to 32767.
CivilTime civilTime(std::int64_t seconds);

// Whether there is such a date, in the years 1 to 9999, and such a time of day.
bool isCivilTime(const CivilTime& time);

// The inverse of civilTime.
std::int64_t secondsOf(const CivilTime& time);

// The midnight, in seconds, at which a weekday (0: Sunday) of the month begins. week 1 to 4 is the first to
// the fourth such day, 5 the last.
std::int64_t secondsOfWeekday(int year, int month, int week, int weekday);

}  // namespace camera
