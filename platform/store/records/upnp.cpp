// Description of the record: the UPnP port mapping's settings record.
#include "platform/store/records/upnp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _upnp_setting kDefaults{.enable = 0,
                                  .reserved0 = {},
                                  .http_external_port = 80,
                                  .reserved1 = {},
                                  .rtsp_external_port = 554,
                                  .reserved2 = {}};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_upnp_setting, enable, 0, 1),
    CAMERA_RESERVED(_upnp_setting, reserved0),
    CAMERA_BOUNDED(_upnp_setting, http_external_port, 1, 65535),
    CAMERA_RESERVED(_upnp_setting, reserved1),
    CAMERA_BOUNDED(_upnp_setting, rtsp_external_port, 1, 65535),
    CAMERA_RESERVED(_upnp_setting, reserved2),
};

}  // namespace

constexpr RecordInfo upnpRecord = describe::record("upnp", kDefaults, kFields, {.indivisible = true});

}  // namespace camera
