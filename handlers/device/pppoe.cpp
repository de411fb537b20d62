// pppoe.cgi: the PPPoE dial-up client.
#include "platform/store/records/pppoe.h"
#include "handlers/device/network_clients.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<PppoeSettings>(choiceParam<&PppoeSettings::enable>("pppoe", kOffOn),
                                                  pppoeUserParam<&PppoeSettings::user>("user"),
                                                  pppoePassParam<&PppoeSettings::password>("pass"));

}  // namespace

class PppoeEndpoint final : public RecordEndpoint<PppoeSettings> {
 public:
  PppoeEndpoint() : RecordEndpoint(kParams) {}

 private:
  int check(PppoeSettings& wanted) override {
    return canRun(*this, "pppoe", wanted.enable != 0, {{"user", wanted.user}});
  }
};

template InfCgilet* create<PppoeEndpoint>();

}  // namespace camera
