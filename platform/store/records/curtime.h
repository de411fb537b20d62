// The clock's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct ClockSettings {
  // The camera's clock is the system's plus these two. Endpoints do not store the dates and times below.
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

template <>
struct Description<ClockSettings> : Describes<ClockSettings, 104> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, offset_days, -100000, 100000),
      CAMERA_FIELD(4, offset_seconds, -86399, 86399),
      CAMERA_FIELD(8, reserved0),
      CAMERA_FIELD(28, year),
      CAMERA_FIELD(32, month),
      CAMERA_FIELD(36, day),
      CAMERA_FIELD(40, hour),
      CAMERA_FIELD(44, minute),
      CAMERA_FIELD(48, second),
      CAMERA_FIELD(52, utc_date_text),
      CAMERA_FIELD(68, utc_time_text),
      CAMERA_FIELD(78, utc_valid),
      CAMERA_FIELD(79, reserved1),
      CAMERA_FIELD(80, utc_year),
      CAMERA_FIELD(84, utc_month),
      CAMERA_FIELD(88, utc_day),
      CAMERA_FIELD(92, utc_hour),
      CAMERA_FIELD(96, utc_minute),
      CAMERA_FIELD(100, utc_second),
  };
};

}  // namespace camera
