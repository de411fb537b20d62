// pppoe.cgi: the PPPoE dial-up client.
#include "platform/store/records/pppoe.h"
#include "handlers/device/network_clients.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<_pppoe_setting>(choiceParam<&_pppoe_setting::enable>("pppoe", kOffOn),
                                                   pppoeUserParam<&_pppoe_setting::user>("user"),
                                                   pppoePassParam<&_pppoe_setting::password>("pass"));

}  // namespace

class PPPoECgilet final : public RecordEndpoint<_pppoe_setting, 1> {
 public:
  PPPoECgilet() : RecordEndpoint(kParams) {}

 private:
  int check(_pppoe_setting& wanted) override {
    return canRun(*this, "pppoe", wanted.enable != 0, {{"user", wanted.user}});
  }
};

template InfCgilet* create<PPPoECgilet>();

}  // namespace camera
