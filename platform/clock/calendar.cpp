// Converts dates and times of day to and from 64-bit seconds.
#include "platform/clock/calendar.h"

#include <chrono>

namespace camera {
namespace {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year;
using std::chrono::year_month_day;

std::int64_t secondsOfDay(sys_days date) {
  return std::chrono::duration_cast<std::chrono::seconds>(date.time_since_epoch()).count();
}

year_month_day dateOf(const CivilTime& time) {
  return year{time.year} / month{static_cast<unsigned>(time.month)} / day{static_cast<unsigned>(time.day)};
}

}  // namespace

CivilTime civilTime(std::int64_t seconds) {
  const std::chrono::sys_seconds instant{std::chrono::seconds{seconds}};
  const auto midnight = std::chrono::floor<std::chrono::days>(instant);
  const year_month_day date{midnight};
  const auto rest = static_cast<int>((instant - midnight).count());
  return {.year = static_cast<int>(date.year()),
          .month = static_cast<int>(static_cast<unsigned>(date.month())),
          .day = static_cast<int>(static_cast<unsigned>(date.day())),
          .hour = rest / 3600,
          .minute = rest / 60 % 60,
          .second = rest % 60};
}

bool isCivilTime(const CivilTime& time) {
  const bool inRange = time.year >= 1 && time.year <= 9999 && time.month >= 1 && time.month <= 12 &&
                       time.day >= 1 && time.day <= 31 && time.hour >= 0 && time.hour <= 23 &&
                       time.minute >= 0 && time.minute <= 59 && time.second >= 0 && time.second <= 59;
  return inRange && dateOf(time).ok();
}

std::int64_t secondsOf(const CivilTime& time) {
  return secondsOfDay(sys_days{dateOf(time)}) + time.hour * 3600L + time.minute * 60L + time.second;
}

std::int64_t secondsOfWeekday(int inYear, int inMonth, int week, int onWeekday) {
  const auto first = year{inYear} / month{static_cast<unsigned>(inMonth)};
  const weekday wanted{static_cast<unsigned>(onWeekday)};
  return secondsOfDay(week == 5 ? sys_days{first / wanted[std::chrono::last]}
                                : sys_days{first / wanted[static_cast<unsigned>(week)]});
}

}  // namespace camera
