// camera_info.cgi: the names that the user gives the camera.
#include "handlers/endpoint.h"
#include "platform/store/records/host.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<_host_setting>(textParam<&_host_setting::name>("name", 1, 36, kNameText),
                             textParam<&_host_setting::location>("location", 0, 60, kPrintableText));

}  // namespace

class CameraInfoCgilet final : public RecordEndpoint<_host_setting, 0> {
 public:
  CameraInfoCgilet() : RecordEndpoint(kParams) {}
};

template InfCgilet* create<CameraInfoCgilet>();

}  // namespace camera
