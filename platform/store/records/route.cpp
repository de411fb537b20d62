// Description of the record: the pan/tilt head's patrol route.
#include "platform/store/records/route.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {CAMERA_FIELD(RouteSettings, stops)};

}  // namespace

constexpr RecordInfo routeRecord = describe::record<RouteSettings>("route", kFields);

}  // namespace camera
