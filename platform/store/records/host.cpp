// Description of the record: the names that the user gave the camera.
#include "platform/store/records/host.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(HostSettings, name, 1, 36),
    CAMERA_BOUNDED(HostSettings, location, 0, 60),
};

}  // namespace

constexpr RecordInfo hostRecord = describe::record<HostSettings>("host", kFields);

}  // namespace camera
