// Description of the record: the SD card's state; no endpoint changes it. Spaces share one unit.
#include "platform/store/records/sd.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _sd_setting kDefaults{};

constexpr Field kFields[] = {
    CAMERA_FIELD(_sd_setting, full_threshold), CAMERA_FIELD(_sd_setting, state),
    CAMERA_RESERVED(_sd_setting, reserved),    CAMERA_FIELD(_sd_setting, total),
    CAMERA_FIELD(_sd_setting, free),           CAMERA_FIELD(_sd_setting, used),
};

}  // namespace

constexpr RecordInfo sdRecord = describe::record("sd", kDefaults, kFields);

}  // namespace camera
