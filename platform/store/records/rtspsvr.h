// The RTSP server's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _rtspsvr_setting {
  std::uint8_t reserved0[4];
  std::int32_t rtsp_port;  // 1 to 65535
  std::uint8_t reserved1;
  char urlentry[4][32];  // stream path of the video profiles 1 to 4, NUL-terminated
  std::uint8_t reserved2[75];
};
static_assert(sizeof(_rtspsvr_setting) == 212 && std::is_trivially_copyable_v<_rtspsvr_setting>);
static_assert(offsetof(_rtspsvr_setting, rtsp_port) == 4);
static_assert(offsetof(_rtspsvr_setting, urlentry) == 9);
static_assert(offsetof(_rtspsvr_setting, reserved2) == 137);
