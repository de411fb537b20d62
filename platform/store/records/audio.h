// The microphone's and speaker's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _audio_setting {
  std::uint8_t mic_enable;  // 0 off, 1 on
  std::uint8_t mic_volume;  // in tenths of the full volume
  std::uint8_t reserved0[2];
  std::uint8_t speaker_enable;  // 0 off, 1 on
  std::uint8_t speaker_volume;  // in tenths of the full volume
  std::uint8_t reserved1[6];
};
static_assert(sizeof(_audio_setting) == 12 && std::is_trivially_copyable_v<_audio_setting>);
static_assert(offsetof(_audio_setting, speaker_enable) == 4);
