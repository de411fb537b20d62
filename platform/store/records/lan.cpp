// Description of the record: the wired network's settings record.
#include "platform/store/records/lan.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _lan_setting kDefaults{.dhcp = 1,
                                 .ip = "192.168.0.20",
                                 .netmask = "255.255.255.0",
                                 .gateway = "192.168.0.1",
                                 .dns1 = "",
                                 .dns2 = "",
                                 .reserved = {}};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_lan_setting, dhcp, 0, 1),     CAMERA_BOUNDED(_lan_setting, ip, 1, 15),
    CAMERA_BOUNDED(_lan_setting, netmask, 1, 15), CAMERA_BOUNDED(_lan_setting, gateway, 1, 15),
    CAMERA_BOUNDED(_lan_setting, dns1, 0, 15),    CAMERA_BOUNDED(_lan_setting, dns2, 0, 15),
    CAMERA_RESERVED(_lan_setting, reserved),
};

}  // namespace

constexpr RecordInfo lanRecord = describe::record("lan", kDefaults, kFields);

}  // namespace camera
