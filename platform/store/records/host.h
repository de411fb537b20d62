// The names that the user gave the camera.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _host_setting {
  char name[68];      // 1 to 36 bytes
  char location[64];  // up to 60 bytes
};
static_assert(sizeof(_host_setting) == 132 && std::is_trivially_copyable_v<_host_setting>);
static_assert(offsetof(_host_setting, location) == 68);
