// Description of the record: what the firmware says of itself; no endpoint changes it.
#include "platform/store/records/system.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(SystemSettings, reserved), CAMERA_FIELD(SystemSettings, version),
    CAMERA_FIELD(SystemSettings, model),       CAMERA_FIELD(SystemSettings, brand),
    CAMERA_FIELD(SystemSettings, product),     CAMERA_FIELD(SystemSettings, build),
};

}  // namespace

constexpr RecordInfo systemRecord = describe::record<SystemSettings>("system", kFields);

}  // namespace camera
