// The night vision's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct IrSettings {
  std::uint8_t icr_mode;  // day/night switch: 0 auto, 1 manual, 2 day, 3 night
  std::uint8_t ir_led;    // infrared LEDs: 0 off, 1 on; follows the switch in its fixed modes
  std::uint8_t reserved[2];
};
static_assert(sizeof(IrSettings) == 4 && std::is_trivially_copyable_v<IrSettings>);

}  // namespace camera
