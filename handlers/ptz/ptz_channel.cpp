// The commands of the pan/tilt daemon.
#include "handlers/ptz/ptz_channel.h"

#include <algorithm>

#include "platform/daemons/daemon_client.h"
#include "platform/text.h"

namespace camera {
namespace {

// Bytes that a command does not use are 0.
struct PtzRequest {
  Little<std::int32_t> code;
  std::uint8_t presetToGoTo;
  std::uint8_t unused[3];
  PtzPosition way;  // a target or a step
  Little<std::int16_t> presetToStore;
  char name[26];
};
static_assert(sizeof(PtzRequest) == 44 && offsetof(PtzRequest, presetToGoTo) == 4 &&
              offsetof(PtzRequest, way) == 8 && offsetof(PtzRequest, presetToStore) == 16 &&
              offsetof(PtzRequest, name) == 18);

struct PtzAnswer {
  Little<std::int32_t> result;  // 0: done
  PtzLimits limits;
  PtzPosition position;
  PtzPresets presets;
  std::uint8_t unused[5];
};
static_assert(sizeof(PtzAnswer) == 427 && offsetof(PtzAnswer, limits) == 4 &&
              offsetof(PtzAnswer, position) == 12 && offsetof(PtzAnswer, presets) == 20 &&
              offsetof(PtzAnswer, unused) == 422);

PtzRequest requestOf(PtzCode code) {
  PtzRequest request{};
  request.code = static_cast<std::int32_t>(code);
  return request;
}

bool exchange(const PtzRequest& request, PtzAnswer* answer) {
  return daemonClient().ask(kPanTiltDaemon, &request, sizeof request, answer, sizeof *answer) &&
         answer->result == 0;
}

bool send(const PtzRequest& request) {
  PtzAnswer answer{};
  return exchange(request, &answer);
}

template <class Part>
bool readPart(PtzCode code, Part PtzAnswer::*part, Part* value) {
  PtzAnswer answer{};
  const bool done = exchange(requestOf(code), &answer);
  if (done) *value = answer.*part;
  return done;
}

// Shortens a step so that it ends within min and max. 64 bits, because the daemon may report any position.
std::int32_t limited(std::int64_t position, std::int32_t step, int min, int max) {
  if (step > 0 && position + step > max) return static_cast<std::int32_t>(max - position);
  if (step < 0 && position + step < min) return static_cast<std::int32_t>(min - position);
  return step;
}

}  // namespace

bool ptzCommand(PtzCode code, const PtzPosition& way) {
  PtzRequest request = requestOf(code);
  request.way = way;
  return send(request);
}

bool ptzGoToPreset(int slot) {
  PtzRequest request = requestOf(PtzCode::kGoToPreset);
  request.presetToGoTo = static_cast<std::uint8_t>(slot);
  return send(request);
}

bool ptzStorePreset(int slot, std::string_view name) {
  PtzRequest request = requestOf(PtzCode::kStorePreset);
  request.presetToStore = static_cast<std::int16_t>(slot);
  return setText(request.name, name) && send(request);
}

bool ptzRead(PtzLimits* limits) {
  return readPart(PtzCode::kReadLimits, &PtzAnswer::limits, limits);
}

bool ptzRead(PtzPosition* position) {
  return readPart(PtzCode::kReadPosition, &PtzAnswer::position, position);
}

bool ptzRead(PtzPresets* presets) {
  return readPart(PtzCode::kReadPresets, &PtzAnswer::presets, presets);
}

bool ptzReadHome(PtzPosition* home) {
  return readPart(PtzCode::kReadHome, &PtzAnswer::position, home);
}

int mirrorPan(const PtzLimits& limits, int pan) {
  return limits.pmax + limits.pmin - std::max<int>(limits.pmin, std::min<int>(limits.pmax, pan));
}

bool ptzMakeStep(PtzStep* step) {
  PtzLimits limits{};
  PtzPosition position{};
  if (!ptzRead(&limits) || !ptzRead(&position)) return false;
  step->pan = limited(mirrorPan(limits, position.pan), step->pan, limits.pmin, limits.pmax);
  step->tilt = limited(position.tilt, step->tilt, limits.tmin, limits.tmax);
  return ptzCommand(PtzCode::kStep, {-step->pan, step->tilt});
}

}  // namespace camera
