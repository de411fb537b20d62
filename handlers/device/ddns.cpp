// ddns.cgi: the dynamic DNS client.
#include "platform/store/records/ddns.h"
#include "handlers/device/network_clients.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<DdnsSettings>(
    choiceParam<&DdnsSettings::enable>("ddns", kOffOn),
    choiceParam<&DdnsSettings::provider>("provider", kDdnsProviders),
    ddnsHostParam<&DdnsSettings::host>("host"), ddnsAccountParam<&DdnsSettings::user>("user"),
    ddnsAccountParam<&DdnsSettings::password>("pass"));

}  // namespace

class DdnsEndpoint final : public RecordEndpoint<DdnsSettings> {
 public:
  DdnsEndpoint() : RecordEndpoint(kParams) {}

 private:
  int check(DdnsSettings& wanted) override {
    return canRun(*this, "ddns", wanted.enable != 0,
                  {{"provider", wanted.provider},
                   {"host", wanted.host},
                   {"user", wanted.user},
                   {"pass", wanted.password}});
  }
};

template InfCgilet* create<DdnsEndpoint>();

}  // namespace camera
