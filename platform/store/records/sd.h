// The SD card's state; no endpoint changes it. total, free and used are in KiB.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct CardSettings {
  std::int32_t full_threshold;  // in MiB; with no more than that free, the card is full
  // 2 ready, 3 protected, 4 invalid, 5 full, 6 over capacity, 8 to initialise, 9 formatting, 10 recording
  std::uint8_t state;
  std::uint8_t reserved[3];
  std::int32_t total;
  std::int32_t free;
  std::int32_t used;
};

template <>
struct Description<CardSettings> : Describes<CardSettings, 20> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, full_threshold), CAMERA_FIELD(4, state), CAMERA_FIELD(5, reserved),
      CAMERA_FIELD(8, total),          CAMERA_FIELD(12, free), CAMERA_FIELD(16, used),
  };
};

}  // namespace camera
