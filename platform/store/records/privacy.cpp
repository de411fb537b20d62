// Description of the record: the privacy mode's settings record.
#include "platform/store/records/privacy.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _privacy_setting kDefaults{};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_privacy_setting, reserved0),
    CAMERA_BOUNDED(_privacy_setting, enable, 0, 1),
    CAMERA_BOUNDED(_privacy_setting, manual, 0, 1),
    CAMERA_RESERVED(_privacy_setting, reserved1),
};

}  // namespace

constexpr RecordInfo privacyRecord = describe::record("privacy", kDefaults, kFields);

}  // namespace camera
