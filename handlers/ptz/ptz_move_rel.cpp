// ptz_move_rel.cgi: moves the pan/tilt head by a step.
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<PtzStep>(integerParam<&PtzStep::pan>("p", -32, 32),
                                            integerParam<&PtzStep::tilt>("t", -32, 32), ignoredParam("z"));

}  // namespace

class PtzMoveRelEndpoint final : public PtzEndpoint<StateEndpoint<kParams, Takes::kCommand>> {
  int carryOut(PtzStep& wanted) override {
    return given("p") || given("t") ? resultOf(ptzMakeStep(&wanted)) : 200;
  }

  int reply() override {
    if (given("p")) pair("p", state.pan);
    if (given("t")) pair("t", state.tilt);
    if (given("z")) replyZoom();
    return 200;
  }
};

template struct EndpointOf<PtzMoveRelEndpoint>;

}  // namespace camera
