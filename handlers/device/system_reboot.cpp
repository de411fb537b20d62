// system_reboot.cgi: restarts the camera.
#include "handlers/device/system_command.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reboot"));
constexpr char kCommand[] = "( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &";

}  // namespace

class SystemRebootEndpoint final : public SystemCommandEndpoint<kParams, kCommand> {};

template <>
const Api kApi<SystemRebootEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kDevice,
     .summary = "Restarts the camera.",
     .params = {{"reboot", "Confirms that the camera is to restart, five seconds after the reply."}},
     .reply = {{"reboot", ApiType::kText,
                "The camera took the request; a restart that cannot be started is not reported.",
                Words{kNoYes}.last(1)}}});
template struct EndpointOf<SystemRebootEndpoint>;

}  // namespace camera
