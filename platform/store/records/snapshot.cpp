// Description of the record: the snapshots' settings record.
#include "platform/store/records/snapshot.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _snapshot_setting kDefaults{};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_snapshot_setting, reserved0),
    CAMERA_BOUNDED(_snapshot_setting, ftp_enable, 0, 1),
    CAMERA_RESERVED(_snapshot_setting, reserved1),
};

}  // namespace

constexpr RecordInfo snapshotRecord = describe::record("snapshot", kDefaults, kFields);

}  // namespace camera
