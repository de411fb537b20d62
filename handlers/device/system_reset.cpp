// system_reset.cgi: restores the factory settings and, if that succeeded, restarts the camera.
#include "handlers/device/system_command.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reset"));
constexpr char kCommand[] = "( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &";

}  // namespace

class SystemResetEndpoint final : public SystemCommandEndpoint<kParams, kCommand> {};

template struct EndpointOf<SystemResetEndpoint>;

}  // namespace camera
