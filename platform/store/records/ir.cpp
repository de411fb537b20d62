// Description of the record: the night vision's settings record.
#include "platform/store/records/ir.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(IrSettings, icr_mode, 0, 3),
    CAMERA_BOUNDED(IrSettings, ir_led, 0, 1),
    CAMERA_RESERVED(IrSettings, reserved),
};

}  // namespace

constexpr RecordInfo irRecord = describe::record<IrSettings>("ir", kFields, {.indivisible = true});

}  // namespace camera
