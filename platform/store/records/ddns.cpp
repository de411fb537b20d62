// Description of the record: the dynamic DNS client's settings record.
#include "platform/store/records/ddns.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _ddns_setting kDefaults{
    .enable = 0, .provider = "velkorddns", .host = "", .user = "", .password = "", .reserved = {}};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_ddns_setting, enable, 0, 1),    CAMERA_BOUNDED(_ddns_setting, provider, 0, 10),
    CAMERA_BOUNDED(_ddns_setting, host, 0, 36),     CAMERA_BOUNDED(_ddns_setting, user, 0, 30),
    CAMERA_BOUNDED(_ddns_setting, password, 0, 30), CAMERA_RESERVED(_ddns_setting, reserved),
};

}  // namespace

constexpr RecordInfo ddnsRecord = describe::record("ddns", kDefaults, kFields, {.indivisible = true});

}  // namespace camera
