// auto_patrol.cgi: starts or stops the patrol of the pan/tilt head along the presets of its route.
#include "handlers/ptz/sweep.h"
#include "platform/store/records/route.h"
#include "platform/text.h"

namespace camera {
namespace {

// True if one of the stops is the number of a preset.
bool hasStop(std::string_view route, const PtzPresets& presets) {
  while (!route.empty()) {
    int stop = 0;
    if (parseInteger(takeUntil(',', &route), 1, kPtzPresets, &stop) && *presets.slots[stop - 1].name != '\0')
      return true;
  }
  return false;
}

}  // namespace

class AutoPatrolEndpoint final : public SweepEndpoint {
 public:
  AutoPatrolEndpoint() : SweepEndpoint(PtzCode::kStartPatrol) {}

 private:
  // The head refuses a patrol without a route, and does not say why.
  int carryOut(Sweep& wanted) override {
    const int result = SweepEndpoint::carryOut(wanted);
    RouteSettings route;
    PtzPresets presets{};
    if (result != 500 || wanted.act != kStartSweep || !ptzRead(&presets) || read(route) != 200 ||
        hasStop(textOf(route.stops), presets))
      return result;
    return fail(500, "the patrol has no route; config_auto_patrol.cgi sets one");
  }
};

template <>
const Api kApi<AutoPatrolEndpoint> = describes<kSweepParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary =
         "Makes the pan/tilt head visit the presets of the route of config_auto_patrol.cgi again and again.",
     .feature = &ProductInfo::has_pan_tilt,
     .dependent = "act",
     .params = {{"act", "`go` starts the patrol; `stop` stops any movement."}},
     .codes = {{500, "The head may also refuse a patrol without a route; the message says so."}}});
template struct EndpointOf<AutoPatrolEndpoint>;

}  // namespace camera
