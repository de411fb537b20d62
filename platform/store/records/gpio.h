// The digital input and output settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _gpio_setting {
  std::uint8_t pir;  // detection by the infrared sensor: 0 off, 1 on
  std::uint8_t reserved[31];
};
static_assert(sizeof(_gpio_setting) == 32 && std::is_trivially_copyable_v<_gpio_setting>);
