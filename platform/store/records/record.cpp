// Description of the record: the recording's settings record; no endpoint changes it.
#include "platform/store/records/record.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _record_setting kDefaults{};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_record_setting, enable, 0, 1),
    CAMERA_RESERVED(_record_setting, reserved0),
    CAMERA_FIELD(_record_setting, format_while_recording),
    CAMERA_RESERVED(_record_setting, reserved1),
};

}  // namespace

constexpr RecordInfo recordRecord = describe::record("record", kDefaults, kFields);

}  // namespace camera
