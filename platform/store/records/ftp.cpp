// Description of the record: the FTP upload's settings record.
#include "platform/store/records/ftp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _ftp_setting kDefaults{.enable = 0,
                                 .passive = 1,
                                 .reserved0 = {},
                                 .port = 21,
                                 .interval = 60000,
                                 .user = "",
                                 .pass = "",
                                 .prefix = "",
                                 .host = "",
                                 .path = "",
                                 .reserved1 = {}};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_ftp_setting, enable, 0, 1),
    CAMERA_BOUNDED(_ftp_setting, passive, 0, 1),
    CAMERA_RESERVED(_ftp_setting, reserved0),
    CAMERA_BOUNDED(_ftp_setting, port, 1, 65535),
    CAMERA_BOUNDED(_ftp_setting, interval, 10000, 86400000),
    CAMERA_BOUNDED(_ftp_setting, user, 0, 30),
    CAMERA_BOUNDED(_ftp_setting, pass, 0, 30),
    CAMERA_BOUNDED(_ftp_setting, prefix, 0, 30),
    CAMERA_BOUNDED(_ftp_setting, host, 0, 60),
    CAMERA_BOUNDED(_ftp_setting, path, 0, 30),
    CAMERA_RESERVED(_ftp_setting, reserved1),
};

}  // namespace

constexpr RecordInfo ftpRecord = describe::record("ftp", kDefaults, kFields);

}  // namespace camera
