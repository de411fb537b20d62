// Description of the record: the snapshots' settings record.
#include "platform/store/records/snapshot.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(SnapshotSettings, reserved0),
    CAMERA_BOUNDED(SnapshotSettings, ftp_enable, 0, 1),
    CAMERA_RESERVED(SnapshotSettings, reserved1),
};

}  // namespace

constexpr RecordInfo snapshotRecord = describe::record<SnapshotSettings>("snapshot", kFields);

}  // namespace camera
