// system_reset.cgi: restores the factory settings and, when that succeeded, restarts the camera.
#include "handlers/device/system_command.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reset"));

}  // namespace

class SystemResetEndpoint final : public SystemCommandEndpoint {
 public:
  SystemResetEndpoint()
      : SystemCommandEndpoint(kParams,
                              "( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &") {}
};

template InfCgilet* create<SystemResetEndpoint>();

}  // namespace camera
