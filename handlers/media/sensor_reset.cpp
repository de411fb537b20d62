// sensor_reset.cgi: returns the image sensor's settings to the factory's.
#include "handlers/confirmation.h"
#include "handlers/endpoint.h"
#include "platform/store/records/image.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reset"));

}  // namespace

class SensorResetCgilet final : public StateEndpoint<Confirmation> {
 public:
  SensorResetCgilet() : StateEndpoint(kParams, Takes::kCommand) {}

 private:
  // A reset that fails is no failure of the request.
  int carryOut(Confirmation& /*wanted*/) override {
    _image_setting image;
    isDone_ = cam_reset_image(&image) == 0;
    return 200;
  }

  int reply() override {
    pair("reset", isDone_ ? "yes" : "fail");
    return 200;
  }

  bool isDone_ = false;
};

template InfCgilet* create<SensorResetCgilet>();

}  // namespace camera
