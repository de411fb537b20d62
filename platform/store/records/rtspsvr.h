// The RTSP server's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct RtspServerSettings {
  std::uint8_t reserved0[4];
  std::int32_t rtsp_port = 554;  // 1 to 65535
  std::uint8_t reserved1;
  char urlentry[4][32] = {"live1", "live2", "live3",
                          "live4"};  // stream path of the video profiles 1 to 4, NUL-terminated
  std::uint8_t reserved2[75];
};
static_assert(sizeof(RtspServerSettings) == 212 && std::is_trivially_copyable_v<RtspServerSettings>);
static_assert(offsetof(RtspServerSettings, rtsp_port) == 4);
static_assert(offsetof(RtspServerSettings, urlentry) == 9);
static_assert(offsetof(RtspServerSettings, reserved2) == 137);

}  // namespace camera
