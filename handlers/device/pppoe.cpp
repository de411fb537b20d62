// pppoe.cgi: the PPPoE dial-up client.
#include "platform/records/pppoe.h"
#include "handlers/device/network_clients.h"
#include "handlers/transaction.h"

class PPPoECgilet final : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    if (cam_get_pppoe(&pppoe_) == 0) status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    if (!params_.check(*this)) return;
    params_.merge();
    if (!camera::canRun(params_, "pppoe", pppoe_.enable, {{"user", pppoe_.user}})) return;
    status = changed_ ? camera::store(cam_set_pppoe, pppoe_, 1) : 200;
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
  _pppoe_setting pppoe_;
  bool changed_ = false;
  camera::ParamTable params_{{
      camera::choiceParam("pppoe", camera::kOffOn).into(pppoe_.enable, changed_),
      camera::pppoeUserParam("user").into(pppoe_.user, changed_),
      camera::pppoePassParam("pass").into(pppoe_.password, changed_),
  }};
};

template InfCgilet* camera::create<PPPoECgilet>();
