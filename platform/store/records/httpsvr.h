// The HTTP server's settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct HttpServerSettings {
  std::uint8_t reserved0;
  std::uint8_t livevideo = 1;    // live video needs an account: 0 off, 1 on
  std::uint8_t snapshoturl = 1;  // the snapshot URL needs an account: 0 off, 1 on
  std::uint8_t reserved1;
  std::int32_t http_port = 80;
  std::int32_t alt_port = 443;  // a second port of the server; no endpoint sets it
};

template <>
struct Description<HttpServerSettings> : Describes<HttpServerSettings, 12> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved0), CAMERA_FIELD(1, livevideo, 0, 1),     CAMERA_FIELD(2, snapshoturl, 0, 1),
      CAMERA_FIELD(3, reserved1), CAMERA_FIELD(4, http_port, 1, 65535), CAMERA_FIELD(8, alt_port),
  };
  static constexpr Exceptions kExceptions{.dependsOn = recordBit(RecordIndex::rtspsvr)};
};

}  // namespace camera
