// timestamp.cgi: the on-screen display.
#include "handlers/endpoint.h"
#include "platform/store/records/osd.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<_osd_setting>(choiceParam<&_osd_setting::enable>("enable", kOffOn),
                            choiceParam<&_osd_setting::showtime>("showtime", kOffOn),
                            textParam<&_osd_setting::label>("label", 0, 30, "", kAnyBytes));

}  // namespace

class TimeStampCgilet final : public RecordEndpoint<_osd_setting, 1> {
 public:
  TimeStampCgilet() : RecordEndpoint(kParams) {}
};

template InfCgilet* create<TimeStampCgilet>();

}  // namespace camera
