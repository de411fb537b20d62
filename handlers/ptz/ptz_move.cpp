// ptz_move.cgi: moves the pan/tilt head to a position.
#include "handlers/ptz/ptz_target.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<PtzTarget>(kPanParam, kTiltParam, ignoredParam("z"));

}  // namespace

class PtzMoveEndpoint final : public PtzTargetEndpoint<kParams> {
  int carryOut(PtzTarget& wanted) override {
    PtzPosition target{};
    const bool moves = given("p") || given("t");
    return resultOf(aim(&wanted, &target) && (!moves || ptzCommand(PtzCode::kGoTo, target)));
  }

  // Reports the target: the head may still be moving.
  int reply() override {
    PtzPosition current{};
    if (queries().empty() && !aim(&state, &current)) return resultOf(false);
    StateEndpoint::reply();
    replyZoom();
    return 200;
  }
};

template <>
const Api kApi<PtzMoveEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary = "Moves the pan/tilt head to a position.",
     .feature = &ProductInfo::has_pan_tilt,
     .dependent = "p t",
     .params = {{"p", "The pan, within the limits that ptz_info.cgi reports; the current one if missing."},
                {"t", "The tilt, within the limits that ptz_info.cgi reports; the current one if missing."}},
     .reply = {{"p", ApiType::kNumber, "The pan of the target; without parameters, the current one."},
               {"t", ApiType::kNumber, "The tilt of the target; without parameters, the current one."},
               kZoomKey},
     .schema = targetSchema});
template struct EndpointOf<PtzMoveEndpoint>;

}  // namespace camera
