// The command channel to the pan/tilt daemon.
#include "handlers/ptz/ptz_channel.h"

#include <algorithm>
#include <cstring>

#include "platform/daemons/daemon_client.h"

namespace camera {
namespace {

void fillRequest(PtzCode code, const void* data, PtzRequest* request) {
  switch (code) {
    case PtzCode::kGoTo:
    case PtzCode::kStep: {
      const auto& way = *static_cast<const PtzPosition*>(data);
      const std::int32_t pan = way.pan;
      request->pan = code == PtzCode::kStep ? -pan : pan;
      request->tilt = way.tilt;
      break;
    }
    case PtzCode::kGoToPreset:
      request->arg = static_cast<std::uint8_t>(*static_cast<const std::int32_t*>(data));
      break;
    case PtzCode::kStorePreset:
      *request = *static_cast<const PtzRequest*>(data);
      break;
    default:
      break;
  }
  request->code = static_cast<std::int32_t>(code);
}

// The part of an answer that goes with the code; null for a code that asks nothing.
const void* payload(PtzCode code, const PtzAnswer& answer) {
  switch (code) {
    case PtzCode::kReadLimits:
      return &answer.limits;
    case PtzCode::kReadPosition:
    case PtzCode::kReadHome:
      return &answer.position;
    case PtzCode::kReadPresets:
      return &answer.presets;
    default:
      return nullptr;
  }
}

// A daemon may report any number as the position.
std::int32_t limited(std::int64_t position, std::int32_t step, int min, int max) {
  if (step > 0 && position + step > max) return static_cast<std::int32_t>(max - position);
  if (step < 0 && position + step < min) return static_cast<std::int32_t>(min - position);
  return step;
}

}  // namespace

bool ptzCommand(PtzCode code, void* data, std::size_t length) {
  PtzRequest request{};
  fillRequest(code, data, &request);
  PtzAnswer answer{};
  const bool done = daemonClient().ask(kPanTiltDaemon, &request, sizeof request, &answer, sizeof answer) &&
                    answer.result == 0;
  if (const void* told = payload(code, answer); done && told != nullptr) std::memcpy(data, told, length);
  return done;
}

int mirrorPan(const PtzLimits& limits, int value) {
  return limits.pmax + limits.pmin - std::max<int>(limits.pmin, std::min<int>(limits.pmax, value));
}

bool ptzStep(PtzStep* step) {
  PtzLimits limits{};
  PtzPosition position{};
  if (!ptzCommand(PtzCode::kReadLimits, &limits) || !ptzCommand(PtzCode::kReadPosition, &position)) {
    return false;
  }
  step->pan = limited(mirrorPan(limits, position.pan), step->pan, limits.pmin, limits.pmax);
  step->tilt = limited(position.tilt, step->tilt, limits.tmin, limits.tmax);
  PtzPosition way{.pan = step->pan, .tilt = step->tilt};
  return ptzCommand(PtzCode::kStep, &way);
}

}  // namespace camera
