// Description of the record: the clock's settings record.
#include "platform/store/records/curtime.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(ClockSettings, offset_days, -100000, 100000),
    CAMERA_BOUNDED(ClockSettings, offset_seconds, -86399, 86399),
    CAMERA_RESERVED(ClockSettings, reserved0),
    CAMERA_FIELD(ClockSettings, year),
    CAMERA_FIELD(ClockSettings, month),
    CAMERA_FIELD(ClockSettings, day),
    CAMERA_FIELD(ClockSettings, hour),
    CAMERA_FIELD(ClockSettings, minute),
    CAMERA_FIELD(ClockSettings, second),
    CAMERA_FIELD(ClockSettings, utc_date_text),
    CAMERA_FIELD(ClockSettings, utc_time_text),
    CAMERA_FIELD(ClockSettings, utc_valid),
    CAMERA_RESERVED(ClockSettings, reserved1),
    CAMERA_FIELD(ClockSettings, utc_year),
    CAMERA_FIELD(ClockSettings, utc_month),
    CAMERA_FIELD(ClockSettings, utc_day),
    CAMERA_FIELD(ClockSettings, utc_hour),
    CAMERA_FIELD(ClockSettings, utc_minute),
    CAMERA_FIELD(ClockSettings, utc_second),
};

}  // namespace

constexpr RecordInfo curtimeRecord = describe::record<ClockSettings>("curtime", kFields);

}  // namespace camera
