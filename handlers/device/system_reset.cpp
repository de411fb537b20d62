// system_reset.cgi: restores the factory settings and, if that succeeded, restarts the camera.
#include "handlers/device/system_command.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reset"));
constexpr char kCommand[] = "( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &";

}  // namespace

class SystemResetEndpoint final : public SystemCommandEndpoint<kParams, kCommand> {};

template <>
const Api kApi<SystemResetEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kDevice,
     .summary = "Restores the factory settings, including addresses and accounts, and restarts the camera.",
     .records = "all",
     .params = {{"reset", "Confirms the reset, which begins five seconds after the reply."}},
     .reply = {{"reset", ApiType::kText,
                "The camera took the request; a reset that fails later is not reported.",
                Words{kNoYes}.last(1)}}});
template struct EndpointOf<SystemResetEndpoint>;

}  // namespace camera
