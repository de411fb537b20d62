// pppoe.cgi: the PPPoE dial-up client.
#include "platform/store/records/pppoe.h"
#include "handlers/device/network_clients.h"
#include "handlers/record_cgilet.h"

class PPPoECgilet final : public camera::RecordCgilet<_pppoe_setting, cam_get_pppoe, cam_set_pppoe, 1> {
  camera::ParamTable& params() override { return params_; }

  bool isConsistent() override {
    return camera::canRun(params_, "pppoe", record_.enable, {{"user", record_.user}});
  }

  camera::ParamTable params_{{
      camera::choiceParam("pppoe", camera::kOffOn).into(record_.enable, changed_),
      camera::pppoeUserParam("user").into(record_.user, changed_),
      camera::pppoePassParam("pass").into(record_.password, changed_),
  }};
};

template InfCgilet* camera::create<PPPoECgilet>();
