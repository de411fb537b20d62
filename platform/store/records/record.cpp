// Description of the record: the recording's settings record; no endpoint changes it.
#include "platform/store/records/record.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(RecordingSettings, enable, 0, 1),
    CAMERA_RESERVED(RecordingSettings, reserved0),
    CAMERA_FIELD(RecordingSettings, format_while_recording),
    CAMERA_RESERVED(RecordingSettings, reserved1),
};

}  // namespace

constexpr RecordInfo recordRecord = describe::record<RecordingSettings>("record", kFields);

}  // namespace camera
