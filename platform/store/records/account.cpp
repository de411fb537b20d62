// Description of the record: the accounts' settings record.
#include "platform/store/records/account.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _account_setting kDefaults{.reserved0 = 0,
                                     .admin_name = "admin",
                                     .admin_password = "",
                                     .max_users = 20,
                                     .user_count = 0,
                                     .user_name = {},
                                     .user_password = {},
                                     .reserved1 = {}};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_account_setting, reserved0),
    CAMERA_BOUNDED(_account_setting, admin_name, 1, 30),
    CAMERA_BOUNDED(_account_setting, admin_password, 0, 30),
    CAMERA_BOUNDED(_account_setting, max_users, 0, 20),
    CAMERA_BOUNDED(_account_setting, user_count, 0, 20),
    CAMERA_BOUNDED(_account_setting, user_name, 0, 30),
    CAMERA_BOUNDED(_account_setting, user_password, 0, 30),
    CAMERA_RESERVED(_account_setting, reserved1),
};

}  // namespace

constexpr RecordInfo accountRecord = describe::record("account", kDefaults, kFields, {.indivisible = true});

}  // namespace camera
