// camera_info.cgi: the names that the user gives the camera.
#include "handlers/record_cgilet.h"
#include "platform/store/records/host.h"

class CameraInfoCgilet final : public camera::RecordCgilet<_host_setting, cam_get_host, cam_set_host, 0> {
  camera::ParamTable& params() override { return params_; }

  camera::ParamTable params_{{
      camera::textParam("name", 1, 36, camera::kNameText).into(record_.name, changed_),
      camera::textParam("location", 0, 60, camera::kPrintableText).into(record_.location, changed_),
  }};
};

template InfCgilet* camera::create<CameraInfoCgilet>();
