// Description of the record: the PPPoE client's settings record.
#include "platform/store/records/pppoe.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _pppoe_setting kDefaults{.enable = 0, .user = "", .password = ""};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_pppoe_setting, enable, 0, 1),
    CAMERA_BOUNDED(_pppoe_setting, user, 0, 32),
    CAMERA_BOUNDED(_pppoe_setting, password, 0, 60),
};
static_assert(describe::tiles(kFields, sizeof(_pppoe_setting)));

}  // namespace

constexpr RecordInfo pppoeRecord{.name = "pppoe",
                                 .version = 1,
                                 .size = sizeof(_pppoe_setting),
                                 .fields = kFields,
                                 .defaults = &kDefaults,
                                 .whole = true,
                                 .linked = 0};

}  // namespace camera
