// The clock's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _curtime_setting {
  // The camera's clock is the system's plus this many days and seconds; the rest of the record is derived
  // from it.
  std::int32_t offset_days;
  std::int32_t offset_seconds;
  std::uint8_t reserved0[20];
  std::int32_t year;  // local date and time
  std::int32_t month;
  std::int32_t day;
  std::int32_t hour;
  std::int32_t minute;
  std::int32_t second;
  char utc_date_text[16];  // "2024/02/29"
  char utc_time_text[10];  // "13:05:00"
  std::uint8_t utc_valid;  // 1 when the UTC fields are filled
  std::uint8_t reserved1;
  std::int32_t utc_year;
  std::int32_t utc_month;
  std::int32_t utc_day;
  std::int32_t utc_hour;
  std::int32_t utc_minute;
  std::int32_t utc_second;
};
static_assert(sizeof(_curtime_setting) == 104 && std::is_trivially_copyable_v<_curtime_setting>);
static_assert(offsetof(_curtime_setting, year) == 28);
static_assert(offsetof(_curtime_setting, second) == 48);
static_assert(offsetof(_curtime_setting, utc_date_text) == 52);
static_assert(offsetof(_curtime_setting, utc_time_text) == 68);
static_assert(offsetof(_curtime_setting, utc_valid) == 78);
static_assert(offsetof(_curtime_setting, utc_year) == 80);
