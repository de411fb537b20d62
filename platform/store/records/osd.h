// The on-screen display's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct OsdSettings {
  std::uint8_t enable;    // 0 off, 1 on
  std::uint8_t showtime;  // 0 off, 1 on
  char label[34];
};
static_assert(sizeof(OsdSettings) == 36 && std::is_trivially_copyable_v<OsdSettings>);
static_assert(offsetof(OsdSettings, label) == 2);

}  // namespace camera
