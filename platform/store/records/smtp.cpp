// Description of the record: the mail account's settings record.
#include "platform/store/records/smtp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _smtp_setting kDefaults{.enable = 0,
                                  .reserved0 = {},
                                  .port = 25,
                                  .host = "",
                                  .user = "",
                                  .pass = "",
                                  .sender = "",
                                  .to = "",
                                  .reserved1 = {}};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_smtp_setting, enable, 0, 1),   CAMERA_RESERVED(_smtp_setting, reserved0),
    CAMERA_BOUNDED(_smtp_setting, port, 1, 65535), CAMERA_BOUNDED(_smtp_setting, host, 0, 60),
    CAMERA_BOUNDED(_smtp_setting, user, 0, 30),    CAMERA_BOUNDED(_smtp_setting, pass, 0, 30),
    CAMERA_BOUNDED(_smtp_setting, sender, 0, 60),  CAMERA_BOUNDED(_smtp_setting, to, 0, 60),
    CAMERA_RESERVED(_smtp_setting, reserved1),
};

}  // namespace

constexpr RecordInfo smtpRecord = describe::record("smtp", kDefaults, kFields);

}  // namespace camera
