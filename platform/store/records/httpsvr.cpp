// Description of the HTTP server's settings record.
#include "platform/store/records/httpsvr.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _httpsvr_setting kDefaults{
    .reserved0 = 0, .livevideo = 1, .snapshoturl = 1, .reserved1 = 0, .http_port = 80, .alt_port = 443};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_httpsvr_setting, reserved0),          CAMERA_BOUNDED(_httpsvr_setting, livevideo, 0, 1),
    CAMERA_BOUNDED(_httpsvr_setting, snapshoturl, 0, 1),   CAMERA_RESERVED(_httpsvr_setting, reserved1),
    CAMERA_BOUNDED(_httpsvr_setting, http_port, 1, 65535), CAMERA_FIELD(_httpsvr_setting, alt_port),
};

}  // namespace

constexpr RecordInfo httpsvrRecord =
    describe::record("httpsvr", kDefaults, kFields, {.dependsOn = recordBit(RecordIndex::rtspsvr)});

}  // namespace camera
