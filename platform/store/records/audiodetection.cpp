// Description of the record: the sound detection's settings record.
#include "platform/store/records/audiodetection.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _audio_detection_setting kDefaults{.enable = 0, .sensitivity = 70, .push = 0};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_audio_detection_setting, enable, 0, 1),
    CAMERA_BOUNDED(_audio_detection_setting, sensitivity, 50, 90),
    CAMERA_BOUNDED(_audio_detection_setting, push, 0, 1),
};

}  // namespace

constexpr RecordInfo audiodetectionRecord = describe::record("audiodetection", kDefaults, kFields);

}  // namespace camera
