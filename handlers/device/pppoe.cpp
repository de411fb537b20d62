// pppoe.cgi: the PPPoE dial-up client.
#include "platform/store/records/pppoe.h"
#include "handlers/device/network_clients.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<PppoeSettings>(choiceParam<&PppoeSettings::enable>("pppoe", kOffOn),
                             textParam<&PppoeSettings::user>("user", kPunctuationText),
                             textParam<&PppoeSettings::password>("pass", kPunctuationText));

}  // namespace

class PppoeEndpoint final : public ClientEndpoint<RecordEndpoint<kParams>> {
  int check(PppoeSettings& wanted) override {
    return canRun("pppoe", wanted.enable != 0, {{"user", wanted.user}});
  }
};

template struct EndpointOf<PppoeEndpoint>;

}  // namespace camera
