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

template <>
const Api kApi<PtzMoveRelEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary = "Moves the pan/tilt head by a step.",
     .feature = &ProductInfo::has_pan_tilt,
     .params = {{"p", "The step in units of the pan; positive is to the right.", nullptr, "5"},
                {"t", "The step in units of the tilt; positive is up.", nullptr, "5"}},
     .reply = {{.name = "p",
                .type = ApiType::kNumber,
                .meaning = "The step of the pan that the head makes; only if `p` is given.",
                .isOptional = true},
               {.name = "t",
                .type = ApiType::kNumber,
                .meaning = "The step of the tilt that the head makes; only if `t` is given.",
                .isOptional = true},
               {.name = "z",
                .type = ApiType::kNumber,
                .meaning = "Always 0; only if `z` is given and the head zooms.",
                .isOptional = true}}});
template struct EndpointOf<PtzMoveRelEndpoint>;

}  // namespace camera
