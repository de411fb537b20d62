// What the firmware says of itself; no endpoint changes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct SystemSettings {
  std::uint8_t reserved[32];
  char version[32] = "1.0.0";
  char model[160] = "IPCAM";
  char brand[128] = "Camera";
  char product[160] = "Network Camera";
  char build[40] = "1";
};
static_assert(sizeof(SystemSettings) == 552 && std::is_trivially_copyable_v<SystemSettings>);
static_assert(offsetof(SystemSettings, version) == 32);
static_assert(offsetof(SystemSettings, model) == 64);
static_assert(offsetof(SystemSettings, brand) == 224);
static_assert(offsetof(SystemSettings, product) == 352);
static_assert(offsetof(SystemSettings, build) == 512);

}  // namespace camera
