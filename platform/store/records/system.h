// What the firmware says of itself; no endpoint changes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _system_setting {
  std::uint8_t reserved[32];
  char version[32];
  char model[160];
  char brand[128];
  char product[160];
  char build[40];
};
static_assert(sizeof(_system_setting) == 552 && std::is_trivially_copyable_v<_system_setting>);
static_assert(offsetof(_system_setting, version) == 32);
static_assert(offsetof(_system_setting, model) == 64);
static_assert(offsetof(_system_setting, brand) == 224);
static_assert(offsetof(_system_setting, product) == 352);
static_assert(offsetof(_system_setting, build) == 512);
