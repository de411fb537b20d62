// Description of the record: the dynamic DNS client's settings record.
#include "platform/store/records/ddns.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(DdnsSettings, enable, 0, 1),    CAMERA_BOUNDED(DdnsSettings, provider, 0, 10),
    CAMERA_BOUNDED(DdnsSettings, host, 0, 36),     CAMERA_BOUNDED(DdnsSettings, user, 0, 30),
    CAMERA_BOUNDED(DdnsSettings, password, 0, 30), CAMERA_RESERVED(DdnsSettings, reserved),
};

}  // namespace

constexpr RecordInfo ddnsRecord = describe::record<DdnsSettings>("ddns", kFields, {.indivisible = true});

}  // namespace camera
