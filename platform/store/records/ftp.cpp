// Description of the record: the FTP upload's settings record.
#include "platform/store/records/ftp.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(FtpSettings, enable, 0, 1),
    CAMERA_BOUNDED(FtpSettings, passive, 0, 1),
    CAMERA_RESERVED(FtpSettings, reserved0),
    CAMERA_BOUNDED(FtpSettings, port, 1, 65535),
    CAMERA_BOUNDED(FtpSettings, interval, 10000, 86400000),
    CAMERA_BOUNDED(FtpSettings, user, 0, 30),
    CAMERA_BOUNDED(FtpSettings, pass, 0, 30),
    CAMERA_BOUNDED(FtpSettings, prefix, 0, 30),
    CAMERA_BOUNDED(FtpSettings, host, 0, 60),
    CAMERA_BOUNDED(FtpSettings, path, 0, 30),
    CAMERA_RESERVED(FtpSettings, reserved1),
};

}  // namespace

constexpr RecordInfo ftpRecord = describe::record<FtpSettings>("ftp", kFields);

}  // namespace camera
