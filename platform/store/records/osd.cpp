// Description of the record: the on-screen display's settings record.
#include "platform/store/records/osd.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(OsdSettings, enable, 0, 1),
    CAMERA_BOUNDED(OsdSettings, showtime, 0, 1),
    CAMERA_BOUNDED(OsdSettings, label, 0, 30),
};

}  // namespace

constexpr RecordInfo osdRecord = describe::record<OsdSettings>("osd", kFields);

}  // namespace camera
