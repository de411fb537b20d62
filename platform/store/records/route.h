// The pan/tilt head's patrol route.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct RouteSettings {
  char stops[64];  // preset slots, counted from 1, separated by commas; empty: no route
};

template <>
struct Description<RouteSettings> : Describes<RouteSettings, 64> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, stops),
  };
};

}  // namespace camera
