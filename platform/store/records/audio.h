// The microphone's and speaker's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct AudioSettings {
  std::uint8_t mic_enable = 1;  // 0 off, 1 on
  std::uint8_t mic_volume = 5;  // in tenths of the full volume
  std::uint8_t reserved0[2];
  std::uint8_t speaker_enable = 1;  // 0 off, 1 on
  std::uint8_t speaker_volume = 5;  // in tenths of the full volume
  std::uint8_t reserved1[6];
};

template <>
struct Description<AudioSettings> : Describes<AudioSettings, 12> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, mic_enable, 0, 1),
      CAMERA_FIELD(1, mic_volume, 0, 10),
      CAMERA_FIELD(2, reserved0),
      CAMERA_FIELD(4, speaker_enable, 0, 1),
      CAMERA_FIELD(5, speaker_volume, 0, 10),
      CAMERA_FIELD(6, reserved1),
  };
};

}  // namespace camera
