// system_reset.cgi: restores the factory settings and, when that succeeded, restarts the camera.
#include "handlers/device/system_command.h"

class SystemResetCgilet final : public camera::SystemCommandCgilet {
 public:
  SystemResetCgilet()
      : SystemCommandCgilet("reset", "( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &") {
  }
};

template InfCgilet* camera::create<SystemResetCgilet>();
