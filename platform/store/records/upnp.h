// The UPnP port mapping's settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace camera {

struct UpnpSettings {
  std::uint8_t enable;  // 0 off, 1 on
  std::uint8_t reserved0[3];
  std::int32_t http_external_port = 80;  // router-side ports, 1 to 65535; they must differ
  std::uint8_t reserved1[4];
  std::int32_t rtsp_external_port = 554;
  std::uint8_t reserved2[16];
};
static_assert(sizeof(UpnpSettings) == 32 && std::is_trivially_copyable_v<UpnpSettings>);
static_assert(offsetof(UpnpSettings, http_external_port) == 4);
static_assert(offsetof(UpnpSettings, rtsp_external_port) == 12);

}  // namespace camera
