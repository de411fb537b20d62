// Base of ptz_move.cgi and ptz_home.cgi: a target within the limits. A request may give one axis or both.
#pragma once

#include <string>
#include <string_view>

#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

// In the client's view.
struct PtzTarget {
  PtzLimits limits;
  std::int32_t pan;
  std::int32_t tilt;
  std::int32_t act;  // of ptz_home.cgi
};

inline Bounds panBounds(const PtzTarget& target) {
  return {target.limits.pmin, target.limits.pmax};
}
inline Bounds tiltBounds(const PtzTarget& target) {
  return {target.limits.tmin, target.limits.tmax};
}
inline constexpr auto kPanParam =
    integerParam<&PtzTarget::pan>("p", 0, 0).within<panBounds>("pmin to pmax of ptz_info.cgi");
inline constexpr auto kTiltParam =
    integerParam<&PtzTarget::tilt>("t", 0, 0).within<tiltBounds>("tmin to tmax of ptz_info.cgi");

// Only the head knows the limits.
inline std::string targetSchema(std::string_view param, const ProductInfo& /*product*/) {
  return param == "act" ? "" : R"("type":"integer")";
}

template <const auto& kParams>
class PtzTargetEndpoint : public PtzEndpoint<StateEndpoint<kParams>> {
 protected:
  bool ask() override { return ptzRead(&this->state.limits); }

  // Takes an axis that the request does not give from the current position, and converts the target to the
  // daemon's view. False if a command failed.
  bool aim(PtzTarget* target, PtzPosition* position) {
    const bool hasPan = this->given("p");
    const bool hasTilt = this->given("t");
    if (!(hasPan && hasTilt) && !ptzRead(position)) return false;
    if (hasPan) {
      position->pan = mirrorPan(target->limits, target->pan);
    } else {
      target->pan = mirrorPan(target->limits, position->pan);
    }
    if (hasTilt) {
      position->tilt = target->tilt;
    } else {
      target->tilt = position->tilt;
    }
    return true;
  }
};

}  // namespace camera
