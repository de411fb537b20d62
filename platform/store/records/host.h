// The names that the user gave the camera.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct HostSettings {
  char name[68] = "Camera";  // 1 to 36 bytes
  char location[64];         // up to 60 bytes
};
static_assert(sizeof(HostSettings) == 132 && std::is_trivially_copyable_v<HostSettings>);
static_assert(offsetof(HostSettings, location) == 68);

}  // namespace camera
