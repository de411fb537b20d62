// sensor_reset.cgi: returns the image sensor's settings to the factory's.
#include "handlers/confirmation.h"
#include "handlers/endpoint.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reset"));

}  // namespace

class SensorResetEndpoint final : public StateEndpoint<kParams, Takes::kCommand> {
  // A reset that fails is no failure of the request.
  int carryOut(Confirmation& /*wanted*/) override {
    isDone_ = resetImage() == StoreResult::kDone;
    return 200;
  }

  int reply() override {
    pair("reset", isDone_ ? "yes" : "fail");
    return 200;
  }

  bool isDone_ = false;
};

template void serve<SensorResetEndpoint>();

}  // namespace camera
