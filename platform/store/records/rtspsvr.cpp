// Description of the RTSP server's settings record.
#include "platform/store/records/rtspsvr.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(RtspServerSettings, reserved0), CAMERA_BOUNDED(RtspServerSettings, rtsp_port, 1, 65535),
    CAMERA_RESERVED(RtspServerSettings, reserved1), CAMERA_BOUNDED(RtspServerSettings, urlentry, 1, 15),
    CAMERA_RESERVED(RtspServerSettings, reserved2),
};

}  // namespace

constexpr RecordInfo rtspsvrRecord =
    describe::record<RtspServerSettings>("rtspsvr", kFields, {.dependsOn = recordBit(RecordIndex::httpsvr)});

}  // namespace camera
