// The motion detection's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct MotionSettings {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t sensitivity = 50;
  std::uint8_t push;  // push notification on detected motion: 0 off, 1 on
  // The watched blocks of the picture, a hexadecimal digit for four. The factory mask covers the whole
  // picture and watches nothing.
  char mbmask[512] =
      "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
      "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"
      "0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000";
  std::uint8_t reserved;
  std::int32_t pir_sensitivity = 50;  // of the infrared sensor: 0, 50 or 100
};
static_assert(sizeof(MotionSettings) == 520 && std::is_trivially_copyable_v<MotionSettings>);
static_assert(offsetof(MotionSettings, mbmask) == 3);
static_assert(offsetof(MotionSettings, pir_sensitivity) == 516);

}  // namespace camera
