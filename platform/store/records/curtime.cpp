// Description of the record: the clock's settings record.
#include "platform/store/records/curtime.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _curtime_setting kDefaults{};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_curtime_setting, offset_days, -100000, 100000),
    CAMERA_BOUNDED(_curtime_setting, offset_seconds, -86399, 86399),
    CAMERA_RESERVED(_curtime_setting, reserved0),
    CAMERA_FIELD(_curtime_setting, year),
    CAMERA_FIELD(_curtime_setting, month),
    CAMERA_FIELD(_curtime_setting, day),
    CAMERA_FIELD(_curtime_setting, hour),
    CAMERA_FIELD(_curtime_setting, minute),
    CAMERA_FIELD(_curtime_setting, second),
    CAMERA_FIELD(_curtime_setting, utc_date_text),
    CAMERA_FIELD(_curtime_setting, utc_time_text),
    CAMERA_FIELD(_curtime_setting, utc_valid),
    CAMERA_RESERVED(_curtime_setting, reserved1),
    CAMERA_FIELD(_curtime_setting, utc_year),
    CAMERA_FIELD(_curtime_setting, utc_month),
    CAMERA_FIELD(_curtime_setting, utc_day),
    CAMERA_FIELD(_curtime_setting, utc_hour),
    CAMERA_FIELD(_curtime_setting, utc_minute),
    CAMERA_FIELD(_curtime_setting, utc_second),
};

}  // namespace

constexpr RecordInfo curtimeRecord = describe::record("curtime", kDefaults, kFields);

}  // namespace camera
