// pppoe.cgi: the PPPoE dial-up client.
#include "platform/store/records/pppoe.h"
#include "handlers/device/network_clients.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<PppoeSettings>(choiceParam<&PppoeSettings::enable>("pppoe", kOffOn),
                             textParam<&PppoeSettings::user>("user", kPunctuationText),
                             textParam<&PppoeSettings::password>("pass", kPunctuationText).secret());

}  // namespace

class PppoeEndpoint final : public ClientEndpoint<RecordEndpoint<kParams>> {
  int check(PppoeSettings& wanted) override {
    return canRun("pppoe", wanted.enable != 0, {{"user", wanted.user}});
  }
};

template <>
const Api kApi<PppoeEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kNetwork,
     .summary = "The PPPoE client.",
     .records = "`pppoe`",
     .dependent = "pppoe",
     .params = {{"pppoe", "Switches the client; `on` needs `user`, given or stored."},
                {"user", "The account's name; must not be empty while the client is on.", nullptr, "line7"},
                {"pass", "The account's password.", nullptr, "secret"}},
     .state = factoryState<PppoeSettings>});
template struct EndpointOf<PppoeEndpoint>;

}  // namespace camera
