// system_reboot.cgi: restarts the camera.
#include "handlers/device/system_command.h"

class SystemRebootCgilet final : public camera::SystemCommandCgilet {
 public:
  SystemRebootCgilet()
      : SystemCommandCgilet("reboot", "( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &") {}
};

template InfCgilet* camera::create<SystemRebootCgilet>();
