// The descriptions of all records, by index.
#include "platform/store/record.h"

namespace camera {

#define CAMERA_RECORD_POINTER(name, type) &name##Record,
constexpr std::array<const RecordInfo*, kRecordCount> kRecords{CAMERA_RECORDS(CAMERA_RECORD_POINTER)};
#undef CAMERA_RECORD_POINTER

}  // namespace camera
