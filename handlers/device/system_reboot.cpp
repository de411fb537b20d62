// system_reboot.cgi: restarts the camera.
#include "handlers/device/system_command.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reboot"));
constexpr char kCommand[] = "( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &";

}  // namespace

class SystemRebootEndpoint final : public SystemCommandEndpoint<kParams, kCommand> {};

template struct EndpointOf<SystemRebootEndpoint>;

}  // namespace camera
