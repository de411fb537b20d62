// The pan/tilt head's patrol route.
#pragma once

#include <type_traits>

namespace camera {

struct RouteSettings {
  char stops[64];  // preset slots, counted from 1, separated by commas; empty: no route
};
static_assert(sizeof(RouteSettings) == 64 && std::is_trivially_copyable_v<RouteSettings>);

}  // namespace camera
