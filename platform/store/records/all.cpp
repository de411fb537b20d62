// All records, by index.
#include "platform/store/records/account.h"
#include "platform/store/records/audio.h"
#include "platform/store/records/audiodetection.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/ddns.h"
#include "platform/store/records/ftp.h"
#include "platform/store/records/gpio.h"
#include "platform/store/records/host.h"
#include "platform/store/records/httpsvr.h"
#include "platform/store/records/image.h"
#include "platform/store/records/ir.h"
#include "platform/store/records/lan.h"
#include "platform/store/records/motiond.h"
#include "platform/store/records/ntp.h"
#include "platform/store/records/osd.h"
#include "platform/store/records/pppoe.h"
#include "platform/store/records/privacy.h"
#include "platform/store/records/profile.h"
#include "platform/store/records/record.h"
#include "platform/store/records/route.h"
#include "platform/store/records/rtspsvr.h"
#include "platform/store/records/sd.h"
#include "platform/store/records/smtp.h"
#include "platform/store/records/snapshot.h"
#include "platform/store/records/system.h"
#include "platform/store/records/tzone.h"
#include "platform/store/records/upnp.h"
#include "platform/store/records/wireless.h"

namespace camera {

#define CAMERA_DEFINE_RECORD(name, type) \
  constexpr RecordInfo name##Record =    \
      describe::record<Description<type>>(#name);  // NOLINT: a type cannot be in parentheses
CAMERA_RECORDS(CAMERA_DEFINE_RECORD)
#undef CAMERA_DEFINE_RECORD

#define CAMERA_RECORD_POINTER(name, type) &name##Record,
constexpr std::array<const RecordInfo*, kRecordCount> kRecords{CAMERA_RECORDS(CAMERA_RECORD_POINTER)};
#undef CAMERA_RECORD_POINTER

}  // namespace camera
