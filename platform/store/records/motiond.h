// The motion detection's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _motiond_setting {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t sensitivity;
  std::uint8_t push;  // push notification on detected motion: 0 off, 1 on
  char mbmask[512];   // the watched blocks of the picture, a hexadecimal digit for four
  std::uint8_t reserved;
  std::int32_t pir_sensitivity;  // of the infrared sensor: 0, 50 or 100
};
static_assert(sizeof(_motiond_setting) == 520 && std::is_trivially_copyable_v<_motiond_setting>);
static_assert(offsetof(_motiond_setting, mbmask) == 3);
static_assert(offsetof(_motiond_setting, pir_sensitivity) == 516);
