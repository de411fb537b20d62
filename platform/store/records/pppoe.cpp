// Description of the record: the PPPoE client's settings record.
#include "platform/store/records/pppoe.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(PppoeSettings, enable, 0, 1),
    CAMERA_BOUNDED(PppoeSettings, user, 0, 32),
    CAMERA_BOUNDED(PppoeSettings, password, 0, 60),
};

}  // namespace

constexpr RecordInfo pppoeRecord = describe::record<PppoeSettings>("pppoe", kFields, {.indivisible = true});

}  // namespace camera
