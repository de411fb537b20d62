// ddns.cgi: the dynamic DNS client.
#include "platform/store/records/ddns.h"
#include "handlers/device/network_clients.h"
#include "handlers/record_cgilet.h"

class DDNSCgilet final : public camera::RecordCgilet<_ddns_setting, cam_get_ddns, cam_set_ddns, 1> {
  camera::ParamTable& params() override { return params_; }

  bool isConsistent() override {
    return camera::canRun(params_, "ddns", record_.enable,
                          {{"provider", record_.provider},
                           {"host", record_.host},
                           {"user", record_.user},
                           {"pass", record_.password}});
  }

  camera::ParamTable params_{{
      camera::choiceParam("ddns", camera::kOffOn).into(record_.enable, changed_),
      camera::choiceParam("provider", camera::kDdnsProviders).into(record_.provider, changed_),
      camera::ddnsHostParam("host").into(record_.host, changed_),
      camera::ddnsAccountParam("user").into(record_.user, changed_),
      camera::ddnsAccountParam("pass").into(record_.password, changed_),
  }};
};

template InfCgilet* camera::create<DDNSCgilet>();
