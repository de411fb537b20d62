// Description of the record: the night vision's settings record.
#include "platform/store/records/ir.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _ir_setting kDefaults{};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_ir_setting, icr_mode, 0, 3),
    CAMERA_BOUNDED(_ir_setting, ir_led, 0, 1),
    CAMERA_RESERVED(_ir_setting, reserved),
};

}  // namespace

constexpr RecordInfo irRecord = describe::record("ir", kDefaults, kFields, {.indivisible = true});

}  // namespace camera
