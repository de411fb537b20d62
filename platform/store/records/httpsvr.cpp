// Description of the HTTP server's settings record.
#include "platform/store/records/httpsvr.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(HttpServerSettings, reserved0),
    CAMERA_BOUNDED(HttpServerSettings, livevideo, 0, 1),
    CAMERA_BOUNDED(HttpServerSettings, snapshoturl, 0, 1),
    CAMERA_RESERVED(HttpServerSettings, reserved1),
    CAMERA_BOUNDED(HttpServerSettings, http_port, 1, 65535),
    CAMERA_FIELD(HttpServerSettings, alt_port),
};

}  // namespace

constexpr RecordInfo httpsvrRecord =
    describe::record<HttpServerSettings>("httpsvr", kFields, {.dependsOn = recordBit(RecordIndex::rtspsvr)});

}  // namespace camera
