// Description of the record: the accounts' settings record.
#include "platform/store/records/account.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(AccountSettings, reserved0),
    CAMERA_BOUNDED(AccountSettings, admin_name, 1, 30),
    CAMERA_BOUNDED(AccountSettings, admin_password, 0, 30),
    CAMERA_BOUNDED(AccountSettings, max_users, 0, 20),
    CAMERA_BOUNDED(AccountSettings, user_count, 0, 20),
    CAMERA_BOUNDED(AccountSettings, user_name, 0, 30),
    CAMERA_BOUNDED(AccountSettings, user_password, 0, 30),
    CAMERA_RESERVED(AccountSettings, reserved1),
};

}  // namespace

constexpr RecordInfo accountRecord =
    describe::record<AccountSettings>("account", kFields, {.indivisible = true});

}  // namespace camera
