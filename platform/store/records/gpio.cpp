// Description of the record: the digital input and output settings record.
#include "platform/store/records/gpio.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _gpio_setting kDefaults{.pir = 0, .reserved = {}};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_gpio_setting, pir, 0, 1),
    CAMERA_RESERVED(_gpio_setting, reserved),
};

}  // namespace

constexpr RecordInfo gpioRecord = describe::record("gpio", kDefaults, kFields);

}  // namespace camera
