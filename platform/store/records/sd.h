// The SD card's state; no endpoint changes it. Spaces share one unit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct CardSettings {
  std::int32_t full_threshold;  // in 1024 units: with no more than that free, the card is full
  // 2 ready, 3 protected, 4 invalid, 5 full, 6 over capacity, 8 to initialise, 9 formatting, 10 recording
  std::uint8_t state;
  std::uint8_t reserved[3];
  std::int32_t total;
  std::int32_t free;
  std::int32_t used;
};
static_assert(sizeof(CardSettings) == 20 && std::is_trivially_copyable_v<CardSettings>);
static_assert(offsetof(CardSettings, state) == 4);
static_assert(offsetof(CardSettings, total) == 8);
static_assert(offsetof(CardSettings, free) == 12);
static_assert(offsetof(CardSettings, used) == 16);

}  // namespace camera
