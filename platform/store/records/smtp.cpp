// Description of the record: the mail account's settings record.
#include "platform/store/records/smtp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(SmtpSettings, enable, 0, 1),   CAMERA_RESERVED(SmtpSettings, reserved0),
    CAMERA_BOUNDED(SmtpSettings, port, 1, 65535), CAMERA_BOUNDED(SmtpSettings, host, 0, 60),
    CAMERA_BOUNDED(SmtpSettings, user, 0, 30),    CAMERA_BOUNDED(SmtpSettings, pass, 0, 30),
    CAMERA_BOUNDED(SmtpSettings, sender, 0, 60),  CAMERA_BOUNDED(SmtpSettings, to, 0, 60),
    CAMERA_RESERVED(SmtpSettings, reserved1),
};

}  // namespace

constexpr RecordInfo smtpRecord = describe::record<SmtpSettings>("smtp", kFields);

}  // namespace camera
