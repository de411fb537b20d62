// Description of the record: the on-screen display's settings record.
#include "platform/store/records/osd.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _osd_setting kDefaults{.enable = 0, .showtime = 0, .label = ""};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_osd_setting, enable, 0, 1),
    CAMERA_BOUNDED(_osd_setting, showtime, 0, 1),
    CAMERA_BOUNDED(_osd_setting, label, 0, 30),
};

}  // namespace

constexpr RecordInfo osdRecord = describe::record("osd", kDefaults, kFields);

}  // namespace camera
