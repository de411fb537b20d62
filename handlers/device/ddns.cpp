// ddns.cgi: the dynamic DNS client.
#include "platform/records/ddns.h"
#include "handlers/device/network_clients.h"
#include "handlers/transaction.h"

class DDNSCgilet final : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    if (cam_get_ddns(&ddns_) == 0) status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    if (!params_.check(*this)) return;
    params_.merge();
    if (!camera::canRun(params_, "ddns", ddns_.enable,
                        {{"provider", ddns_.provider},
                         {"host", ddns_.host},
                         {"user", ddns_.user},
                         {"pass", ddns_.password}})) {
      return;
    }
    status = changed_ ? camera::store(cam_set_ddns, ddns_, 1) : 200;
  }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    params_.reply(*this);
    infOK();
  }

 private:
  _ddns_setting ddns_;
  bool changed_ = false;
  camera::ParamTable params_{{
      camera::choiceParam("ddns", camera::kOffOn).into(ddns_.enable, changed_),
      camera::choiceParam("provider", camera::kDdnsProviders).into(ddns_.provider, changed_),
      camera::ddnsHostParam("host").into(ddns_.host, changed_),
      camera::ddnsAccountParam("user").into(ddns_.user, changed_),
      camera::ddnsAccountParam("pass").into(ddns_.password, changed_),
  }};
};

template InfCgilet* camera::create<DDNSCgilet>();
