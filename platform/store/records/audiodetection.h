// The sound detection's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct AudioDetectionSettings {
  std::uint8_t enable;            // 0 off, 1 on
  std::uint8_t sensitivity = 70;  // in steps of 5
  std::uint8_t push;              // push notification on detected sound: 0 off, 1 on
};
static_assert(sizeof(AudioDetectionSettings) == 3 && std::is_trivially_copyable_v<AudioDetectionSettings>);

}  // namespace camera
