// The clock's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct ClockSettings {
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
static_assert(sizeof(ClockSettings) == 104 && std::is_trivially_copyable_v<ClockSettings>);
static_assert(offsetof(ClockSettings, year) == 28);
static_assert(offsetof(ClockSettings, second) == 48);
static_assert(offsetof(ClockSettings, utc_date_text) == 52);
static_assert(offsetof(ClockSettings, utc_time_text) == 68);
static_assert(offsetof(ClockSettings, utc_valid) == 78);
static_assert(offsetof(ClockSettings, utc_year) == 80);

}  // namespace camera
