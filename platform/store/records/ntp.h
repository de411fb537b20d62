// The network time client's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct NtpSettings {
  std::uint8_t method;  // 0 the clock is set by hand, 1 from the server
  std::uint8_t reserved;
  char timeserver[64];
};
static_assert(sizeof(NtpSettings) == 66 && std::is_trivially_copyable_v<NtpSettings>);
static_assert(offsetof(NtpSettings, timeserver) == 2);

}  // namespace camera
