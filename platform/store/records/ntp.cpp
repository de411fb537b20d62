// Description of the record: the network time client's settings record.
#include "platform/store/records/ntp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(NtpSettings, method, 0, 1),
    CAMERA_RESERVED(NtpSettings, reserved),
    CAMERA_BOUNDED(NtpSettings, timeserver, 0, 60),
};

}  // namespace

constexpr RecordInfo ntpRecord = describe::record<NtpSettings>("ntp", kFields, {.indivisible = true});

}  // namespace camera
