// Description of the record: the wired network's settings record.
#include "platform/store/records/lan.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(LanSettings, dhcp, 0, 1),     CAMERA_BOUNDED(LanSettings, ip, 1, 15),
    CAMERA_BOUNDED(LanSettings, netmask, 1, 15), CAMERA_BOUNDED(LanSettings, gateway, 1, 15),
    CAMERA_BOUNDED(LanSettings, dns1, 0, 15),    CAMERA_BOUNDED(LanSettings, dns2, 0, 15),
    CAMERA_RESERVED(LanSettings, reserved),
};

}  // namespace

constexpr RecordInfo lanRecord = describe::record<LanSettings>("lan", kFields);

}  // namespace camera
