// Description of the record: the SD card's state; no endpoint changes it. Spaces share one unit.
#include "platform/store/records/sd.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_FIELD(CardSettings, full_threshold), CAMERA_FIELD(CardSettings, state),
    CAMERA_RESERVED(CardSettings, reserved),    CAMERA_FIELD(CardSettings, total),
    CAMERA_FIELD(CardSettings, free),           CAMERA_FIELD(CardSettings, used),
};

}  // namespace

constexpr RecordInfo sdRecord = describe::record<CardSettings>("sd", kFields);

}  // namespace camera
