// The microphone's and speaker's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct AudioSettings {
  std::uint8_t mic_enable = 1;  // 0 off, 1 on
  std::uint8_t mic_volume = 5;  // in tenths of the full volume
  std::uint8_t reserved0[2];
  std::uint8_t speaker_enable = 1;  // 0 off, 1 on
  std::uint8_t speaker_volume = 5;  // in tenths of the full volume
  std::uint8_t reserved1[6];
};
static_assert(sizeof(AudioSettings) == 12 && std::is_trivially_copyable_v<AudioSettings>);
static_assert(offsetof(AudioSettings, speaker_enable) == 4);

}  // namespace camera
