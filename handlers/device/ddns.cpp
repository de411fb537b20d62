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

class DdnsEndpoint final : public RecordEndpoint<kParams> {
  int check(DdnsSettings& wanted) override {
    return canRun(*this, "ddns", wanted.enable != 0, given("ddns"),
                  {{"provider", wanted.provider, given("provider")},
                   {"host", wanted.host, given("host")},
                   {"user", wanted.user, given("user")},
                   {"pass", wanted.password, given("pass")}});
  }
};

template void serve<DdnsEndpoint>();

}  // namespace camera
