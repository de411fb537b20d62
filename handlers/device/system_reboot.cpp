// system_reboot.cgi: restarts the camera.
#include "handlers/device/system_command.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reboot"));

}  // namespace

class SystemRebootCgilet final : public SystemCommandEndpoint {
 public:
  SystemRebootCgilet()
      : SystemCommandEndpoint(kParams, "( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &") {}
};

template InfCgilet* create<SystemRebootCgilet>();

}  // namespace camera
