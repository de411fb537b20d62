// Description of the record: the UPnP port mapping's settings record.
#include "platform/store/records/upnp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(UpnpSettings, enable, 0, 1),
    CAMERA_RESERVED(UpnpSettings, reserved0),
    CAMERA_BOUNDED(UpnpSettings, http_external_port, 1, 65535),
    CAMERA_RESERVED(UpnpSettings, reserved1),
    CAMERA_BOUNDED(UpnpSettings, rtsp_external_port, 1, 65535),
    CAMERA_RESERVED(UpnpSettings, reserved2),
};

}  // namespace

constexpr RecordInfo upnpRecord = describe::record<UpnpSettings>("upnp", kFields, {.indivisible = true});

}  // namespace camera
