// The pan/tilt endpoints on a camera without a head, and the route of config_auto_patrol.cgi.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kMove{"ptz_move.cgi", "ptd.position=10,5", "p=-50&t=5&z=0"};
const Endpoint kMoveRel{"ptz_move_rel.cgi", "ptd.position=-165,5"};
const Endpoint kDirection{"ptz_direction.cgi"};
const Endpoint kPos{"ptz_pos.cgi", kMove.state, kMove.reply};
const Endpoint kInfo{"ptz_info.cgi", "", "pmax=130&pmin=-170&tmax=90&tmin=-30&customizedhome=yes"};
const Endpoint kHome{"ptz_home.cgi", "ptd.position=10,5 ptd.home=20,7", "p=-60&t=7&z=0"};
const Endpoint kPreset{"ptz_preset.cgi"};
const Endpoint kPresets{"ptz_preset_list.cgi", "ptd.preset0=-170,5,low ptd.preset4=130,-3,Top",
                        "presets=low,Top&low=130,5&Top=-170,-3"};
const Endpoint kAutoPan{"auto_pan.cgi"};
const Endpoint kAutoPatrol{"auto_patrol.cgi", "route.stops=1 ptd.preset0=1,2,a"};
const Endpoint kRoute{
    "config_auto_patrol.cgi",
    "route.stops=4,1,4 ptd.preset0=1,1,a ptd.preset1=2,2,b ptd.preset3=3,3,d-_. ptd.preset5=4,4,a",
    "presets=d-_.,a,d-_.", "set route"};
const Endpoint* const kAll[] = {&kMove,   &kMoveRel, &kDirection, &kPos,        &kInfo, &kHome,
                                &kPreset, &kPresets, &kAutoPan,   &kAutoPatrol, &kRoute};

TEST(Ptz, NeedsAHead) {
  for (const Endpoint* endpoint : kAll) {
    endpoint->refuses("!", "product.has_pan_tilt=0", 404);
    EXPECT_EQ(scripted().history({"get", "send"}), "get product") << endpoint->cgi;
  }
}

std::string repeated(int times, const std::string& text) {
  std::string all;
  while (times-- > 0) all += (all.empty() ? "" : ",") + text;
  return all;
}

TEST(PtzRoute, IsGivenByNamesAndStoredByNumbers) {
  const std::string twenty = "presets=" + repeated(20, "a");
  kRoute.accepts("presets=d-_.,a,d-_. presets=");
  kRoute.accepts({{"presets=,b,,a,", "", "presets=b,a"},
                  {twenty + repeated(5, ",a"), "", twenty},
                  {twenty + ",nobody", "", twenty},
                  {"", "route.stops=0,11,-1,3,x,,99999999999,2", "presets=b"},
                  {"", "route.stops=" + repeated(20, "2"), "presets=" + repeated(20, "b")}});
  kRoute.refuses("presets=nobody presets=a,nobody,B", "", 400,
                 "presets: there is no preset nobody; names of ptz_preset_list.cgi, separated by commas");
  kRoute.refuses("presets=a,B presets=a+b presets=" + repeated(240, "a") + ",a");
  kRoute.refuses("!", "route.stops=" + repeated(21, "1"), 500);
  scripted().reset(kRoute.state + " route.stops=");
  request(kRoute.cgi, "presets=d-_.,a,b");
  EXPECT_EQ(scripted().stored("route.stops"), "4,1,2");
}

TEST(PtzPatrol, SaysThatItHasNoRouteIfThatIsWhyTheHeadRefuses) {
  const std::string noRoute = "error=500&message=the patrol has no route; config_auto_patrol.cgi sets one";
  const std::string refused = "error=500&message=pan/tilt head: no answer, or the command was refused";
  const std::pair<const char*, std::string> rows[] = {{"", noRoute}, {"2,x", noRoute}, {"2,1", refused}};
  for (const auto& [route, message] : rows) {
    scripted().reset(kAutoPatrol.state + " route.stops=" + route);
    scripted().results = {{"send ptd 35", 1}, {"send ptd 16", 1}};
    EXPECT_EQ(request("auto_patrol.cgi", "act=go").body, message) << route;
    EXPECT_EQ(request("auto_patrol.cgi", "act=stop").body, refused) << route;
  }
}

}  // namespace
}  // namespace camera::test
