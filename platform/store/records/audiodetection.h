// The sound detection's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _audio_detection_setting {
  std::uint8_t enable;       // 0 off, 1 on
  std::uint8_t sensitivity;  // in steps of 5
  std::uint8_t push;         // push notification on detected sound: 0 off, 1 on
};
static_assert(sizeof(_audio_detection_setting) == 3 &&
              std::is_trivially_copyable_v<_audio_detection_setting>);
