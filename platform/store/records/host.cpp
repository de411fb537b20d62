// Description of the record: the names that the user gave the camera.
#include "platform/store/records/host.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _host_setting kDefaults{.name = "Camera", .location = ""};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_host_setting, name, 1, 36),
    CAMERA_BOUNDED(_host_setting, location, 0, 60),
};

}  // namespace

constexpr RecordInfo hostRecord = describe::record("host", kDefaults, kFields);

}  // namespace camera
