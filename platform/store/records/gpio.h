// The digital input and output settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct GpioSettings {
  std::uint8_t pir;  // detection by the infrared sensor: 0 off, 1 on
  std::uint8_t reserved[31];
};
static_assert(sizeof(GpioSettings) == 32 && std::is_trivially_copyable_v<GpioSettings>);

}  // namespace camera
