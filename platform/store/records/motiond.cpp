// Description of the record: the motion detection's settings record.
#include "platform/store/records/motiond.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(MotionSettings, enable, 0, 1), CAMERA_BOUNDED(MotionSettings, sensitivity, 0, 100),
    CAMERA_BOUNDED(MotionSettings, push, 0, 1),   CAMERA_BOUNDED(MotionSettings, mbmask, 0, 511),
    CAMERA_RESERVED(MotionSettings, reserved),    CAMERA_BOUNDED(MotionSettings, pir_sensitivity, 0, 100),
};

}  // namespace

// Motion is not detected in every display system, so neither may change while the other is decided.
constexpr RecordInfo motiondRecord =
    describe::record<MotionSettings>("motiond", kFields, {.dependsOn = recordBit(RecordIndex::profile)});

}  // namespace camera
