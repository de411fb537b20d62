// system_reboot.cgi: restarts the camera.
#include "handlers/device/system_command.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reboot"));

}  // namespace

class SystemRebootEndpoint final : public SystemCommandEndpoint {
 public:
  SystemRebootEndpoint()
      : SystemCommandEndpoint(kParams, "( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &") {}
};

template InfCgilet* create<SystemRebootEndpoint>();

}  // namespace camera
