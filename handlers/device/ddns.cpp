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
                            textParam<&DdnsSettings::password>("pass", kPunctuationText));

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

template struct EndpointOf<DdnsEndpoint>;

}  // namespace camera
