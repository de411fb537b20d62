// Description of the record: the wireless client's settings record.
#include "platform/store/records/wireless.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(WirelessSettings, enable, 0, 1),   CAMERA_BOUNDED(WirelessSettings, mode, 0, 1),
    CAMERA_BOUNDED(WirelessSettings, auth, 0, 6),     CAMERA_BOUNDED(WirelessSettings, encryption, 0, 3),
    CAMERA_BOUNDED(WirelessSettings, channel, 1, 14), CAMERA_BOUNDED(WirelessSettings, essid, 1, 32),
    CAMERA_BOUNDED(WirelessSettings, key, 0, 64),
};

}  // namespace

constexpr RecordInfo wirelessRecord =
    describe::record<WirelessSettings>("wireless", kFields, {.indivisible = true});

}  // namespace camera
