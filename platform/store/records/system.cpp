// Description of the record: what the firmware says of itself; no endpoint changes it.
#include "platform/store/records/system.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _system_setting kDefaults{.reserved = {},
                                    .version = "1.0.0",
                                    .model = "IPCAM",
                                    .brand = "Camera",
                                    .product = "Network Camera",
                                    .build = "1"};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_system_setting, reserved), CAMERA_FIELD(_system_setting, version),
    CAMERA_FIELD(_system_setting, model),       CAMERA_FIELD(_system_setting, brand),
    CAMERA_FIELD(_system_setting, product),     CAMERA_FIELD(_system_setting, build),
};

}  // namespace

constexpr RecordInfo systemRecord = describe::record("system", kDefaults, kFields);

}  // namespace camera
