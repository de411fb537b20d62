// camera_info.cgi: the camera's name and location.
#include "handlers/endpoint.h"
#include "platform/store/records/host.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<HostSettings>(textParam<&HostSettings::name>("name", kNameText),
                            textParam<&HostSettings::location>("location", kPrintableText));

}  // namespace

class CameraInfoEndpoint final : public RecordEndpoint<kParams> {};

template <>
const Api kApi<CameraInfoEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kDevice,
                        .summary = "The two names that the user gives the camera.",
                        .records = "`host`",
                        .params = {{"name", "The camera's name."}, {"location", "Where the camera is."}},
                        .state = factoryState<HostSettings>});
template struct EndpointOf<CameraInfoEndpoint>;

}  // namespace camera
