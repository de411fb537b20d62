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

template struct EndpointOf<PtzMoveEndpoint>;

}  // namespace camera
