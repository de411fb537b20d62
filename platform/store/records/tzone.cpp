// Description of the record: the time zone's settings record.
#include "platform/store/records/tzone.h"

#include "platform/clock/time_zones.h"
#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _tzone_setting kDefaults{.timezone = kUtcTimeZone,
                                   .dstenable = 0,
                                   .dstauto = 1,
                                   .offset = "1:00",
                                   .starttime = "M3.5.0/02:00",
                                   .stoptime = "M10.5.0/03:00"};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_tzone_setting, timezone, 1, kTimeZoneCount),
    CAMERA_BOUNDED(_tzone_setting, dstenable, 0, 1),
    CAMERA_BOUNDED(_tzone_setting, dstauto, 0, 1),
    CAMERA_FIELD(_tzone_setting, offset),
    CAMERA_FIELD(_tzone_setting, starttime),
    CAMERA_FIELD(_tzone_setting, stoptime),
};

}  // namespace

constexpr RecordInfo tzoneRecord = describe::record("tzone", kDefaults, kFields);

}  // namespace camera
