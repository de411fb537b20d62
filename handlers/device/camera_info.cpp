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

template void serve<CameraInfoEndpoint>();

}  // namespace camera
