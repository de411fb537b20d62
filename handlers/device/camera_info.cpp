// camera_info.cgi: the names that the user gives the camera.
#include "framework/param_table.h"
#include "handlers/transaction.h"
#include "platform/records/host.h"

class CameraInfoCgilet final : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    if (cam_get_host(&host_) == 0) status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    if (!params_.check(*this)) return;
    params_.merge();
    status = changed_ ? camera::store(cam_set_host, host_, 0) : 200;
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
  _host_setting host_;
  bool changed_ = false;
  camera::ParamTable params_{{
      camera::textParam("name", 1, 36, camera::kNameText).into(host_.name, changed_),
      camera::textParam("location", 0, 60, camera::kPrintableText).into(host_.location, changed_),
  }};
};

template InfCgilet* camera::create<CameraInfoCgilet>();
