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

template <>
const Api kApi<TimeStampEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kPicture,
                        .summary = "The on-screen display.",
                        .records = "`osd`",
                        .params = {{"enable", "Whether the picture has the display."},
                                   {"showtime", "Whether the display shows the time."},
                                   {"label", "The text of the display; may be empty.", nullptr, "Gate 2",
                                    "0 to 30 bytes of text"}},
                        .state = factoryState<OsdSettings>});
template struct EndpointOf<TimeStampEndpoint>;

}  // namespace camera
