// The commands of the pan/tilt daemon. A function returns false if an exchange with the daemon failed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/little_endian.h"

namespace camera {

// Parts of the daemon's answer, byte for byte. Its pan is the client's, mirrored; its tilt is the client's.
struct PtzLimits {
  Little<std::int16_t> pmax, pmin, tmax, tmin;
};
struct PtzPosition {
  Little<std::int32_t> pan, tilt;
};
struct PtzPreset {
  char name[32];  // empty if the slot is free
  PtzPosition position;
};
inline constexpr int kPtzPresets = 10;
struct PtzPresets {
  std::uint8_t unused[2];
  PtzPreset slots[kPtzPresets];
};
static_assert(sizeof(PtzLimits) == 8 && sizeof(PtzPosition) == 8 && sizeof(PtzPreset) == 40 &&
              sizeof(PtzPresets) == 402);

enum class PtzCode : std::int32_t {
  kReadPosition = 1,
  kGoTo = 2,
  kStep = 3,
  kReadPresets = 4,
  kStorePreset = 6,
  kGoToPreset = 7,
  kGoHome = 8,
  kStop = 16,
  kReadLimits = 19,
  kSetHome = 24,  // to the current position
  kResetHome = 25,
  kReadHome = 32,
  kStartAutoPan = 34,
  kStartPatrol = 35,
};

// The way is the target of kGoTo, or the step of kStep.
bool ptzCommand(PtzCode code, const PtzPosition& way = {});
bool ptzGoToPreset(int slot);
// Stores the current position under the name; an empty name frees the slot.
bool ptzStorePreset(int slot, std::string_view name);

// Write their argument only on success.
bool ptzRead(PtzLimits* limits);
bool ptzRead(PtzPosition* position);
bool ptzRead(PtzPresets* presets);
bool ptzReadHome(PtzPosition* home);

// Converts a pan between the client's and the daemon's view. One outside the limits counts as the nearest
// inside.
int mirrorPan(const PtzLimits& limits, int pan);

// In the client's view.
struct PtzStep {
  std::int32_t pan, tilt;
};

// Shortens the step so that it ends within the limits, and makes it.
bool ptzMakeStep(PtzStep* step);

}  // namespace camera
