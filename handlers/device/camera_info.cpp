// camera_info.cgi: the names that the user gives the camera.
#include "handlers/endpoint.h"
#include "platform/store/records/host.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<HostSettings>(textParam<&HostSettings::name>("name", kNameText),
                            textParam<&HostSettings::location>("location", kPrintableText));

}  // namespace

class CameraInfoEndpoint final : public RecordEndpoint<kParams> {};

template void serve<CameraInfoEndpoint>();

}  // namespace camera
