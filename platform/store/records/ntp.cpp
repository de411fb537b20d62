// Description of the record: the network time client's settings record.
#include "platform/store/records/ntp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _ntp_setting kDefaults{.method = 0, .reserved = 0, .timeserver = ""};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_ntp_setting, method, 0, 1),
    CAMERA_RESERVED(_ntp_setting, reserved),
    CAMERA_BOUNDED(_ntp_setting, timeserver, 0, 60),
};
static_assert(describe::tiles(kFields, sizeof(_ntp_setting)));

}  // namespace

constexpr RecordInfo ntpRecord{.name = "ntp",
                               .version = 1,
                               .size = sizeof(_ntp_setting),
                               .fields = kFields,
                               .defaults = &kDefaults,
                               .whole = true,
                               .linked = 0};

}  // namespace camera
