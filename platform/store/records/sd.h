// The SD card's state; no endpoint changes it. Spaces share one unit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _sd_setting {
  std::int32_t full_threshold;  // in 1024 units: with no more than that free, the card is full
  // 2 ready, 3 protected, 4 invalid, 5 full, 6 over capacity, 8 to initialise, 9 formatting, 10 recording
  std::uint8_t state;
  std::uint8_t reserved[3];
  std::int32_t total;
  std::int32_t free;
  std::int32_t used;
};
static_assert(sizeof(_sd_setting) == 20 && std::is_trivially_copyable_v<_sd_setting>);
static_assert(offsetof(_sd_setting, state) == 4);
static_assert(offsetof(_sd_setting, total) == 8);
static_assert(offsetof(_sd_setting, free) == 12);
static_assert(offsetof(_sd_setting, used) == 16);
