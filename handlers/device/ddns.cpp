// ddns.cgi: the dynamic DNS client.
#include "platform/store/records/ddns.h"
#include "handlers/device/network_clients.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<_ddns_setting>(
    choiceParam<&_ddns_setting::enable>("ddns", kOffOn),
    choiceParam<&_ddns_setting::provider>("provider", kDdnsProviders),
    ddnsHostParam<&_ddns_setting::host>("host"), ddnsAccountParam<&_ddns_setting::user>("user"),
    ddnsAccountParam<&_ddns_setting::password>("pass"));

}  // namespace

class DDNSCgilet final : public RecordEndpoint<_ddns_setting, 1> {
 public:
  DDNSCgilet() : RecordEndpoint(kParams) {}

 private:
  int check(_ddns_setting& wanted) override {
    return canRun(*this, "ddns", wanted.enable != 0,
                  {{"provider", wanted.provider},
                   {"host", wanted.host},
                   {"user", wanted.user},
                   {"pass", wanted.password}});
  }
};

template InfCgilet* create<DDNSCgilet>();

}  // namespace camera
