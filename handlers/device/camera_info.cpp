// camera_info.cgi: the names that the user gives the camera.
#include "handlers/endpoint.h"
#include "platform/store/records/host.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<HostSettings>(textParam<&HostSettings::name>("name", 1, 36, kNameText),
                            textParam<&HostSettings::location>("location", 0, 60, kPrintableText));

}  // namespace

class CameraInfoEndpoint final : public RecordEndpoint<kParams> {};

template void serve<CameraInfoEndpoint>();

}  // namespace camera
