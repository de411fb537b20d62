// Description of the record: the sound detection's settings record.
#include "platform/store/records/audiodetection.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(AudioDetectionSettings, enable, 0, 1),
    CAMERA_BOUNDED(AudioDetectionSettings, sensitivity, 50, 90),
    CAMERA_BOUNDED(AudioDetectionSettings, push, 0, 1),
};

}  // namespace

constexpr RecordInfo audiodetectionRecord =
    describe::record<AudioDetectionSettings>("audiodetection", kFields);

}  // namespace camera
