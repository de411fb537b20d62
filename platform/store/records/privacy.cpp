// Description of the record: the privacy mode's settings record.
#include "platform/store/records/privacy.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(PrivacySettings, reserved0),
    CAMERA_BOUNDED(PrivacySettings, enable, 0, 1),
    CAMERA_BOUNDED(PrivacySettings, manual, 0, 1),
    CAMERA_RESERVED(PrivacySettings, reserved1),
};

}  // namespace

constexpr RecordInfo privacyRecord = describe::record<PrivacySettings>("privacy", kFields);

}  // namespace camera
