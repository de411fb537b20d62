// ddns.cgi: the dynamic DNS client.
#include "platform/store/records/ddns.h"
#include "handlers/device/network_clients.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<DdnsSettings>(choiceParam<&DdnsSettings::enable>("ddns", kOffOn),
                            choiceParam<&DdnsSettings::provider>("provider", kDdnsProviders),
                            textParam<&DdnsSettings::host>("host", kNameText),
                            textParam<&DdnsSettings::user>("user", kPunctuationText),
                            textParam<&DdnsSettings::password>("pass", kPunctuationText).secret());

}  // namespace

class DdnsEndpoint final : public ClientEndpoint<RecordEndpoint<kParams>> {
  int check(DdnsSettings& wanted) override {
    return canRun("ddns", wanted.enable != 0,
                  {{"provider", wanted.provider},
                   {"host", wanted.host},
                   {"user", wanted.user},
                   {"pass", wanted.password}});
  }
};

template <>
const Api kApi<DdnsEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kNetwork,
     .summary = "The dynamic DNS client, which keeps the camera's host name registered with a provider.",
     .records = "`ddns`",
     .dependent = "ddns",
     .params = {{"ddns", "Switches the client; `on` needs all four of the others, given or stored."},
                {"provider", "The provider."},
                {"host", "The host name to register; must not be empty while the client is on.", nullptr,
                 "hall.example.net"},
                {"user", "The account at the provider; must not be empty while the client is on.", nullptr,
                 "me"},
                {"pass", "The account's password; must not be empty while the client is on.", nullptr,
                 "secret"}},
     .state = factoryState<DdnsSettings>});
template struct EndpointOf<DdnsEndpoint>;

}  // namespace camera
