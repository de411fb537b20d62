// Description of the RTSP server's settings record.
#include "platform/store/records/rtspsvr.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _rtspsvr_setting kDefaults{.reserved0 = {},
                                     .rtsp_port = 554,
                                     .reserved1 = 0,
                                     .urlentry = {"live1", "live2", "live3", "live4"},
                                     .reserved2 = {}};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_rtspsvr_setting, reserved0), CAMERA_BOUNDED(_rtspsvr_setting, rtsp_port, 1, 65535),
    CAMERA_RESERVED(_rtspsvr_setting, reserved1), CAMERA_BOUNDED(_rtspsvr_setting, urlentry, 1, 15),
    CAMERA_RESERVED(_rtspsvr_setting, reserved2),
};

}  // namespace

constexpr RecordInfo rtspsvrRecord =
    describe::record("rtspsvr", kDefaults, kFields, {.dependsOn = recordBit(RecordIndex::httpsvr)});

}  // namespace camera
