// Description of the record: the time zone's settings record.
#include "platform/store/records/tzone.h"

#include "platform/clock/time_zones.h"
#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(TimeZoneSettings, timezone, 1, kTimeZoneCount),
    CAMERA_BOUNDED(TimeZoneSettings, dstenable, 0, 1),
    CAMERA_BOUNDED(TimeZoneSettings, dstauto, 0, 1),
    CAMERA_FIELD(TimeZoneSettings, offset),
    CAMERA_FIELD(TimeZoneSettings, starttime),
    CAMERA_FIELD(TimeZoneSettings, stoptime),
};

}  // namespace

constexpr RecordInfo tzoneRecord = describe::record<TimeZoneSettings>("tzone", kFields);

}  // namespace camera
