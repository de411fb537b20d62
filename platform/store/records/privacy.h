// The privacy mode's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct PrivacySettings {
  std::uint8_t reserved0;
  std::uint8_t enable;  // 0 no, 1 yes
  std::uint8_t manual;  // switched on by hand: 0 off, 1 on
  std::uint8_t reserved1;
};
static_assert(sizeof(PrivacySettings) == 4 && std::is_trivially_copyable_v<PrivacySettings>);

}  // namespace camera
