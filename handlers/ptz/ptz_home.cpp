// ptz_home.cgi: the home position of the pan/tilt head.
#include "handlers/ptz/ptz_target.h"

namespace camera {
namespace {

enum Act : std::int32_t { kGet, kSet, kGo, kReset };
constexpr const char* kActs[] = {"get", "set", "go", "reset"};

bool isSet(const PtzTarget& target) {
  return target.act == kSet;
}

constexpr auto kParams =
    paramRows<PtzTarget>(choiceParam<&PtzTarget::act>("act", kActs).required(), kPanParam.onlyIf<isSet>(),
                         kTiltParam.onlyIf<isSet>(), ignoredParam("z"));

}  // namespace

class PtzHomeEndpoint final : public PtzTargetEndpoint<kParams> {
  int carryOut(PtzTarget& wanted) override {
    switch (wanted.act) {
      case kSet:
        return resultOf(setHome(&wanted));
      case kGo:
        return resultOf(ptzCommand(PtzCode::kGoHome));
      case kReset:
        return resultOf(ptzCommand(PtzCode::kResetHome));
      default:
        return 200;
    }
  }

  // The daemon can only make the current position the home position. Reading the position in between is part
  // of the camera's protocol for this; the position is not used, but a failure ends the action.
  bool setHome(PtzTarget* wanted) {
    PtzPosition target{};
    return aim(wanted, &target) && ptzCommand(PtzCode::kGoTo, target) && ptzRead(&target) &&
           ptzCommand(PtzCode::kSetHome);
  }

  int reply() override {
    PtzPosition home{};
    if (!ptzReadHome(&home)) return resultOf(false);
    replyPosition(state.limits, home);
    return 200;
  }
};

template struct EndpointOf<PtzHomeEndpoint>;

}  // namespace camera
