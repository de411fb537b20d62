// Description of the record: the wireless client's settings record.
#include "platform/store/records/wireless.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _wireless_setting kDefaults{
    .enable = 0, .mode = 0, .auth = 0, .encryption = 0, .channel = 1, .essid = "default", .key = ""};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_wireless_setting, enable, 0, 1),   CAMERA_BOUNDED(_wireless_setting, mode, 0, 1),
    CAMERA_BOUNDED(_wireless_setting, auth, 0, 6),     CAMERA_BOUNDED(_wireless_setting, encryption, 0, 3),
    CAMERA_BOUNDED(_wireless_setting, channel, 1, 14), CAMERA_BOUNDED(_wireless_setting, essid, 1, 32),
    CAMERA_BOUNDED(_wireless_setting, key, 0, 64),
};

}  // namespace

constexpr RecordInfo wirelessRecord = describe::record("wireless", kDefaults, kFields, {.indivisible = true});

}  // namespace camera
