// Description of the record: the digital input and output settings record.
#include "platform/store/records/gpio.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(GpioSettings, pir, 0, 1),
    CAMERA_RESERVED(GpioSettings, reserved),
};

}  // namespace

constexpr RecordInfo gpioRecord = describe::record<GpioSettings>("gpio", kFields);

}  // namespace camera
