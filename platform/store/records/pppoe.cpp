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

}  // namespace

constexpr RecordInfo pppoeRecord = describe::record("pppoe", kDefaults, kFields, {.indivisible = true});

}  // namespace camera
