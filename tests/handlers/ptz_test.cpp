// The pan/tilt endpoints: the commands that they send, in the daemon's view, and the head's limits. The
// limits of the scripted head are not symmetric, so that no pan is its own mirror image.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

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

TEST(Ptz, ReportsAZoomOnlyIfThereIsOneAndReadersTakeNoParameters) {
  for (const Endpoint* endpoint : {&kMove, &kPos, &kHome})
    endpoint->accepts({{"", "product.has_zoom=0", "-z"}});
  for (const Endpoint* endpoint : {&kPos, &kInfo, &kPresets}) endpoint->refuses("p=1");
}

TEST(PtzMove, GoesToATargetWithinTheLimitsAndKeepsAnAxisThatIsNotGiven) {
  kMove.accepts({{.query = "p=-170&t=90", .writes = "send ptd 2 130 90"},
                 {.query = "p=130", .writes = "send ptd 2 -170 5"},
                 {.query = "p=-20&z=x", .changes = "p=-20", .writes = "send ptd 2 -20 5"},
                 {.query = "t=-30", .writes = "send ptd 2 10 -30"},
                 {"z=9", "", ""}});
  kMove.refuses("p=-171 p=131 t=-31 t=91");
}

TEST(PtzStep, IsInTheClientsDirectionsAndEndsAtTheLimits) {
  kMoveRel.accepts({{"p=32", "", "p=5", "send ptd 3 -5 0"},
                    {"p=-32&t=32", "ptd.position=125,88", "p=-5&t=2", "send ptd 3 5 2"},
                    {"t=-32", "ptd.position=10,-28", "t=-2", "send ptd 3 0 -2"},
                    {"p=-32&t=0", "", "p=-32&t=0", "send ptd 3 32 0"},
                    {"z=1", "", "z=0", ""},
                    {"t=1&z=", "product.has_zoom=0", "t=1", "send ptd 3 0 1"}});
  kMoveRel.refuses("p=33 p=-33 t=33 t=-33 !");
  const std::pair<const char*, const char*> directions[] = {
      {"up", "0 10"},      {"down", "0 -10"},     {"left", "10 0"},       {"right", "-10 0"},
      {"upleft", "10 10"}, {"upright", "-10 10"}, {"downleft", "10 -10"}, {"downright", "-10 -10"}};
  for (const auto& [word, way] : directions) {
    const std::string query = "direction="s + word + "&speed=10";
    kDirection.accepts({{query, "", query, "send ptd 3 "s + way}});
  }
  kDirection.accepts({{"direction=stop&speed=1", "", "direction=stop&speed=1", "send ptd 16"},
                      {"direction=&speed=1", "", "direction=&speed=1", ""}});
  kDirection.refuses(
      "!speed=0&direction=up !speed=11&direction=stop !speed&direction=up !direction&speed=1 !direction");
}

TEST(PtzHome, IsSetToAPlaceVisitedAndReset) {
  kHome.accepts({{"act=get&p=x", "", ""},
                 {"act=set", "", "p=-50&t=5", "send ptd 2 10 5 send ptd 24"},
                 {"act=set&p=-170", "", "p=-170&t=5", "send ptd 2 130 5 send ptd 24"},
                 {"act=set&p=130&t=90&z=", "", "p=130&t=90", "send ptd 2 -170 90 send ptd 24"},
                 {"act=go&p=9999&t=&z=1", "", "", "send ptd 8"},
                 {"act=reset", "", "p=-40&t=0", "send ptd 25"}});
  kHome.refuses("!act&p=1 act=set&!p=131 act=set&!t=-31");
}

TEST(PtzPreset, IsFoundByItsNameAndTakesTheFirstFreeSlot) {
  kPreset.accepts(
      {{"act=add&name=b", "ptd.preset0=1,2,a", "name=b&act=add", "send ptd 6 1 b"},
       {"act=add&name=a", "ptd.preset1=1,2,a", "name=a&act=add", "send ptd 6 1 a"},
       {"act=go&name=a", "ptd.preset1=1,2,a ptd.preset3=3,4,a", "name=a&act=go", "send ptd 7 3"},
       {"act=del&name=a", "ptd.preset1=1,2,a ptd.preset2=3,4,A", "name=a&act=del", "send ptd 6 1"},
       {"act=add&name=fifteen_LETTER-", "", "name=fifteen_LETTER-&act=add", "send ptd 6 0 fifteen_LETTER-"}});
  kPreset.refuses(
      "!name=&act=add !name=sixteen_letters_&act=add !name=a.b&act=add !name=a&act=go act=Add&name=a "
      "!act&name=a !name&act=go !name",
      "ptd.preset2=1,2,A");
  kPresets.accepts("");
  Endpoint{kPresets.cgi, "", "presets="}.accepts("");
}

TEST(PtzPreset, ThereAreTen) {
  std::string nine;
  for (int slot = 0; slot < 9; ++slot) nine += "ptd.preset" + std::to_string(slot) + "=1,2,a ";
  kPreset.accepts({{"act=add&name=j", nine, "name=j&act=add", "send ptd 6 9 j"}});
  kPreset.refuses("act=add&!name=k", nine + "ptd.preset9=1,2,j");
}

TEST(PtzSweep, StartsAndStops) {
  for (const auto& [endpoint, start] : {std::pair{&kAutoPan, "send ptd 34"}, {&kAutoPatrol, "send ptd 35"}}) {
    endpoint->accepts({{"act=go", "", "act=go", start},
                       {"act=stop", "", "act=stop", "send ptd 16"},
                       {"act=", "", "act=", ""}});
    endpoint->refuses("act=start !act");
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
  kRoute.refuses("presets=nobody presets=a,B presets=a+b presets=" + repeated(240, "a") + ",a");
  kRoute.refuses("!", "route.stops=" + repeated(21, "1"), 500);
  scripted().reset(kRoute.state + " route.stops=");
  request(kRoute.cgi, "presets=d-_.,a,b");
  EXPECT_EQ(scripted().stored("route.stops"), "4,1,2");
}

}  // namespace
}  // namespace camera::test
