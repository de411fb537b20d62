// The HTTP server's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

struct _httpsvr_setting {
  std::uint8_t reserved0;
  std::uint8_t livevideo;    // live video asks for an account: 0 off, 1 on
  std::uint8_t snapshoturl;  // the snapshot URL asks for an account: 0 off, 1 on
  std::uint8_t reserved1;
  std::int32_t http_port;  // 1 to 65535
  std::int32_t alt_port;   // a second port of the server; http_port must differ from it
};
static_assert(sizeof(_httpsvr_setting) == 12 && std::is_trivially_copyable_v<_httpsvr_setting>);
static_assert(offsetof(_httpsvr_setting, livevideo) == 1);
static_assert(offsetof(_httpsvr_setting, snapshoturl) == 2);
static_assert(offsetof(_httpsvr_setting, http_port) == 4);
static_assert(offsetof(_httpsvr_setting, alt_port) == 8);
