// The recording's settings record; no endpoint changes it.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct RecordingSettings {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t reserved0[15];
  std::uint8_t format_while_recording;  // other than 0: the card may be formatted although recording is on
  std::uint8_t reserved1[15];
};

template <>
struct Description<RecordingSettings> : Describes<RecordingSettings, 32> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, enable, 0, 1),
      CAMERA_FIELD(1, reserved0),
      CAMERA_FIELD(16, format_while_recording),
      CAMERA_FIELD(17, reserved1),
  };
};

}  // namespace camera
