// timestamp.cgi: the on-screen display.
#include "handlers/endpoint.h"
#include "platform/store/records/osd.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<OsdSettings>(choiceParam<&OsdSettings::enable>("enable", kOffOn),
                           choiceParam<&OsdSettings::showtime>("showtime", kOffOn),
                           textParam<&OsdSettings::label>("label", 0, 30, "", kAnyBytes));

}  // namespace

class TimeStampEndpoint final : public RecordEndpoint<kParams> {};

template struct EndpointOf<TimeStampEndpoint>;

}  // namespace camera
