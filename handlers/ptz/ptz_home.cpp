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

template <>
const Api kApi<PtzHomeEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary = "The home position of the pan/tilt head.",
     .feature = &ProductInfo::has_pan_tilt,
     .dependent = "act p t",
     .params =
         {{"act",
           "`get` does nothing; `set` moves the head to `p` and `t` and makes the head's position the home "
           "position; `go` moves the head home; `reset` restores the default home position."},
          {.name = "p",
           .meaning =
               "With `set`, the pan, within the limits that ptz_info.cgi reports, or the head's current "
               "one if missing; otherwise ignored.",
           .values = "with `set`, `pmin` to `pmax` of ptz_info.cgi; otherwise anything"},
          {.name = "t",
           .meaning =
               "With `set`, the tilt, within the limits that ptz_info.cgi reports, or the head's current "
               "one if missing; otherwise ignored.",
           .values = "with `set`, `tmin` to `tmax` of ptz_info.cgi; otherwise anything"}},
     .reply = {{"p", ApiType::kNumber, "The pan of the current home position."},
               {"t", ApiType::kNumber, "The tilt of the current home position."},
               kZoomKey},
     .codes = {{500, "The head may have moved, and the home position may have changed."}},
     .schema = targetSchema});
template struct EndpointOf<PtzHomeEndpoint>;

}  // namespace camera
