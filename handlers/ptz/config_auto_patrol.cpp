// config_auto_patrol.cgi: the route of auto_patrol.cgi, a list of presets.
#include "handlers/ptz/preset_names.h"
#include "handlers/ptz/ptz_endpoint.h"
#include "platform/store/records/route.h"
#include "platform/text.h"

namespace camera {

namespace {

constexpr int kMostStops = 20;
static_assert(kMostStops * sizeof("10") <= sizeof(RouteSettings::stops), "every route can be stored");

struct Patrol {
  RouteSettings route;
  std::string_view presets;  // names, as the request gives them
};

constexpr auto kParams =
    paramRows<Patrol>(textParam<&Patrol::presets>("presets", 0, 479, "_-.,").required().listedBy(","));

// The first slot of that name, counted from 1; 0 if there is none.
int stopAt(const PtzPresets& presets, std::string_view name) {
  for (int slot = 0; slot < kPtzPresets; ++slot) {
    if (nameOf(presets.slots[slot]) == name) return slot + 1;
  }
  return 0;
}

}  // namespace

class ConfigAutoPatrolEndpoint final : public PtzEndpoint<StateEndpoint<kParams>> {
  int load() override {
    int result = require(&ProductInfo::has_pan_tilt);
    if (result == 200) result = read(state.route);
    return result == 200 ? resultOf(ptzRead(&presets_)) : result;
  }

  // Names after the first kMostStops are ignored.
  int check(Patrol& wanted) override {
    std::string stops;
    std::string_view rest = wanted.presets;
    for (int count = 0; !rest.empty() && count < kMostStops;) {
      const std::string_view name = takeUntil(',', &rest);
      if (name.empty()) continue;
      const int stop = hasLength(name, 1, kMostPresetName) ? stopAt(presets_, name) : 0;
      if (stop == 0) return refuseName(name);
      appendItem(&stops, Decimal(stop).text());
      ++count;
    }
    setText(wanted.route.stops, stops);
    return 200;
  }

  int refuseName(std::string_view name) {
    return refuse("presets", joined({"there is no preset ", shortened(name),
                                     "; names of ptz_preset_list.cgi, separated by commas"}));
  }

  int carryOut(Patrol& wanted) override {
    writeChanged(state.route, wanted.route);
    return commit();
  }

  // Leaves out stops whose preset was deleted.
  int reply() override {
    std::string names;
    std::string_view rest = state.route.stops;
    for (int count = 0; !rest.empty();) {
      const std::string_view number = takeUntil(',', &rest);
      if (number.empty()) continue;
      if (++count > kMostStops) return fail(500, "settings: the stored route has more than 20 stops");
      int stop = 0;
      if (!parseInteger(number, 1, kPtzPresets, &stop)) continue;
      const std::string_view name = nameOf(presets_.slots[stop - 1]);
      if (!name.empty()) appendItem(&names, name);
    }
    list("presets", names);
    return 200;
  }

  PtzPresets presets_{};
};

template <>
const Api kApi<ConfigAutoPatrolEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary = "The route of the patrol: presets in the order in which the head visits them.",
     .records = "`route`",
     .feature = &ProductInfo::has_pan_tilt,
     .dependent = "presets",
     .params =
         {{.name = "presets",
           .meaning =
               "The names of presets separated by commas, of which the first 20 count; empty for no route.",
           .values = "names of ptz_preset_list.cgi, at most 479 characters, or empty"}},
     .state = factoryState<Patrol>});
template struct EndpointOf<ConfigAutoPatrolEndpoint>;

}  // namespace camera
