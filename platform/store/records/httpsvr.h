// The HTTP server's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct HttpServerSettings {
  std::uint8_t reserved0;
  std::uint8_t livevideo = 1;    // live video asks for an account: 0 off, 1 on
  std::uint8_t snapshoturl = 1;  // the snapshot URL asks for an account: 0 off, 1 on
  std::uint8_t reserved1;
  std::int32_t http_port = 80;  // 1 to 65535
  std::int32_t alt_port = 443;  // a second port of the server; no endpoint sets it
};
static_assert(sizeof(HttpServerSettings) == 12 && std::is_trivially_copyable_v<HttpServerSettings>);
static_assert(offsetof(HttpServerSettings, livevideo) == 1);
static_assert(offsetof(HttpServerSettings, snapshoturl) == 2);
static_assert(offsetof(HttpServerSettings, http_port) == 4);
static_assert(offsetof(HttpServerSettings, alt_port) == 8);

}  // namespace camera
