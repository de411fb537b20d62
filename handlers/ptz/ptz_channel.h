// The command channel to the pan/tilt daemon: its records as they travel, and the two views of the pan.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/little_endian.h"

namespace camera {

enum class PtzCode : std::int32_t {
  kReadPosition = 1,
  kGoTo = 2,
  kStep = 3,
  kReadPresets = 4,
  kStorePreset = 6,  // or clear it
  kGoToPreset = 7,
  kGoHome = 8,
  kStop = 16,
  kReadLimits = 19,
  kSetHome = 24,  // to where the head is
  kResetHome = 25,
  kReadHome = 32,
  kStartAutoPan = 34,
  kStartPatrol = 35,
};

// What is sent. Every byte without a name is 0.
struct PtzRequest {
  Little<std::int32_t> code;
  std::uint8_t arg;  // the slot of kGoToPreset
  std::uint8_t unused[3];
  Little<std::int32_t> pan;
  Little<std::int32_t> tilt;
  Little<std::int16_t> slot;  // of kStorePreset
  char name[26];              // of kStorePreset; empty: clears the slot
};

// Clients and the daemon see the tilt alike and the pan mirrored. An answer is the daemon's view.
struct PtzLimits {
  Little<std::int16_t> pmax, pmin, tmax, tmin;
};
struct PtzPosition {
  Little<std::int32_t> pan, tilt;
};
struct PtzPreset {
  char name[32];  // empty: an unused slot
  PtzPosition position;
};
inline constexpr int kPtzPresets = 10;
struct PtzPresets {
  std::uint8_t unused[2];
  PtzPreset slots[kPtzPresets];
};

// What comes back.
struct PtzAnswer {
  Little<std::int32_t> result;  // 0: done
  PtzLimits limits;
  PtzPosition position;
  PtzPresets presets;
  std::uint8_t unused[5];
};

static_assert(sizeof(PtzRequest) == 44 && offsetof(PtzRequest, arg) == 4 && offsetof(PtzRequest, pan) == 8 &&
              offsetof(PtzRequest, tilt) == 12 && offsetof(PtzRequest, slot) == 16 &&
              offsetof(PtzRequest, name) == 18);
static_assert(sizeof(PtzAnswer) == 427 && offsetof(PtzAnswer, limits) == 4 &&
              offsetof(PtzAnswer, position) == 12 && offsetof(PtzAnswer, presets) == 20 &&
              offsetof(PtzAnswer, unused) == 422);
static_assert(sizeof(PtzLimits) == 8 && sizeof(PtzPosition) == 8 && sizeof(PtzPreset) == 40 &&
              sizeof(PtzPresets) == 402);

// One exchange with the daemon. True when it did as it was told. The data is
//   of kGoTo and kStep   a PtzPosition that is sent; a step comes as the client sees it and is mirrored here
//   of kGoToPreset       the slot, a std::int32_t whose low byte is sent
//   of kStorePreset      a PtzRequest that is sent
//   of the kRead codes   a PtzPosition, PtzLimits or PtzPresets that is filled, unless the exchange failed
//   of all others        none
bool ptzCommand(PtzCode code, void* data = nullptr, std::size_t length = 0);
template <class Data>
bool ptzCommand(PtzCode code, Data* data) {
  return ptzCommand(code, data, sizeof *data);
}

// The pan of one view in the other; one beyond the limits counts as the nearest that is not.
int mirrorPan(const PtzLimits& limits, int value);

// A step in the client's directions.
struct PtzStep {
  std::int32_t pan, tilt;
};

// Shortens the step so that it ends within the limits, and takes it. False when a command failed.
bool ptzStep(PtzStep* step);

}  // namespace camera
