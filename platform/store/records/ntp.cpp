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

}  // namespace

constexpr RecordInfo ntpRecord = describe::record("ntp", kDefaults, kFields, {.indivisible = true});

}  // namespace camera
