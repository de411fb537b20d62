// The recording's settings record; no endpoint changes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct RecordingSettings {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t reserved0[15];
  std::uint8_t format_while_recording;  // other than 0: the card may be formatted although recording is on
  std::uint8_t reserved1[15];
};
static_assert(sizeof(RecordingSettings) == 32 && std::is_trivially_copyable_v<RecordingSettings>);
static_assert(offsetof(RecordingSettings, format_while_recording) == 16);

}  // namespace camera
