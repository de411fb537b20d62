// The pan/tilt endpoints: what they have the head do, in whose view, and that it never leaves its limits. The
// scripted head reaches further to one side than to the other, so that no pan is its own mirror image.
#include <algorithm>

#include "tests/handlers/endpoint.h"
#include "tests/handlers/scripted_daemons.h"

namespace camera::test {
namespace {

using namespace std::string_literals;
using simulator::Position;

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

TEST(Ptz, TellsAZoomOnlyWhereThereIsOneAndTakesNoParameterWhereItOnlyTells) {
  for (const Endpoint* endpoint : {&kMove, &kPos, &kHome})
    endpoint->accepts({{"", "product.has_zoom=0", "-z"}});
  for (const Endpoint* endpoint : {&kPos, &kInfo, &kPresets}) endpoint->refuses("p=1");
}

TEST(PtzMove, GoesToAPlaceWithinTheLimitsAndKeepsAnAxisThatIsNotGiven) {
  kMove.accepts({{.query = "p=-170&t=90", .writes = "send ptd 2 130 90"},
                 {.query = "p=130", .writes = "send ptd 2 -170 5"},
                 {.query = "p=-20&z=x", .changes = "p=-20", .writes = "send ptd 2 -20 5"},
                 {.query = "t=-30", .writes = "send ptd 2 10 -30"},
                 {"z=9", "", ""}});
  kMove.refuses("p=-171 p=131 t=-31 t=91 p= t=1.0 p=+1 p=1&!q=1 p=1&t=1&z=1&!q=1");
}

TEST(PtzStep, IsOfTheClientsDirectionsAndEndsAtTheLimits) {
  kMoveRel.accepts({{"p=32", "", "p=5", "send ptd 3 -5 0"},
                    {"p=-32&t=0", "", "p=-32&t=0", "send ptd 3 32 0"},
                    {"z=1", "", "z=0", ""},
                    {"t=1&z=", "product.has_zoom=0", "t=1", "send ptd 3 0 1"}});
  kMoveRel.refuses("p=33 p=-33 t=33 t=-33 p= t=a p=1&!q=1 p=1&t=1&z=1&!q=1 !");
  kDirection.accepts({{"direction=right&speed=3", "", "direction=right&speed=3", "send ptd 3 -3 0"}});
  kDirection.refuses(
      "!speed=0&direction=up !speed=11&direction=stop !speed=&direction= direction=Up&speed=1 "
      "!speed&direction=up !direction&speed=1 direction=up&speed=1&!q=1 !direction");
}

// The step is the client's, all else the daemon's, in whose view the head goes the other way.
TEST(PtzStep, NeverLeavesTheLimitsFromAnyPlaceInAnyDirection) {
  scripted().reset("ptd.limits=4,-6,3,-2");
  std::vector<std::pair<std::string, Position>> moves;
  for (int speed = 1; speed <= 10; ++speed) {
    const Position steps[] = {{0, 1}, {0, -1}, {-1, 0}, {1, 0}, {-1, 1}, {1, 1}, {-1, -1}, {1, -1}};
    const char* words[] = {"up", "down", "left", "right", "upleft", "upright", "downleft", "downright"};
    for (int i = 0; i < 8; ++i)
      moves.push_back({"direction="s + words[i] + "&speed=" + std::to_string(speed),
                       {steps[i].pan * speed, steps[i].tilt * speed}});
  }
  for (int step = -32; step <= 32; ++step)
    moves.push_back({"p=" + std::to_string(step) + "&t=" + std::to_string(-step), {step, -step}});
  for (int place = 0; place < 11 * 6; ++place) {
    const Position from{place % 11 - 6, place / 11 - 2};
    for (const auto& [query, step] : moves) {
      daemons().place(from);
      const bool isStep = query.starts_with("p=");
      const std::string reply = request(isStep ? kMoveRel.cgi : kDirection.cgi, query).body;
      const auto [pan, tilt] = daemons().camera.head.position();
      ASSERT_EQ(pan, std::clamp(from.pan - step.pan, -6, 4)) << query;
      ASSERT_EQ(tilt, std::clamp(from.tilt + step.tilt, -2, 3)) << query;
      ASSERT_EQ(reply, isStep
                           ? "p=" + std::to_string(from.pan - pan) + "&t=" + std::to_string(tilt - from.tilt)
                           : query);
    }
  }
}

TEST(PtzHome, IsSetToAPlaceVisitedAndReset) {
  kHome.accepts({{"act=get&p=x", "", ""},
                 {"act=set", "", "p=-50&t=5", "send ptd 2 10 5 send ptd 24"},
                 {"act=set&p=-170", "", "p=-170&t=5", "send ptd 2 130 5 send ptd 24"},
                 {"act=set&p=130&t=90&z=", "", "p=130&t=90", "send ptd 2 -170 90 send ptd 24"},
                 {"act=go&p=9999&t=&z=1", "", "", "send ptd 8"},
                 {"act=reset", "", "p=-40&t=0", "send ptd 25"}});
  kHome.refuses("act=GO act= !act&p=1 act=set&!p=131 act=set&!t=-31 act=get&!q=1 act=set&p=1&t=1&z=1&!q=1");
}

TEST(PtzPreset, IsFoundByItsNameAndTakesTheFirstFreeSlot) {
  kPreset.accepts(
      {{"act=add&name=b", "ptd.preset0=1,2,a", "name=b&act=add", "send ptd 6 1 b"},
       {"act=add&name=a", "ptd.preset1=1,2,a", "name=a&act=add", "send ptd 6 1 a"},
       {"act=go&name=a", "ptd.preset1=1,2,a ptd.preset3=3,4,a", "name=a&act=go", "send ptd 7 3"},
       {"act=del&name=a", "ptd.preset1=1,2,a ptd.preset2=3,4,A", "name=a&act=del", "send ptd 6 1"},
       {"act=add&name=fifteen_LETTER-", "", "name=fifteen_LETTER-&act=add", "send ptd 6 0 fifteen_LETTER-"}});
  kPreset.refuses(
      "!name=&act=add !name=sixteen_letters_&act=add !name=a+b&act=add !name=a.b&act=add !name=a&act=go "
      "!name=B&act=del act=Add&name=a !act&name=a !name&act=go act=add&name=b&!q=1 !name",
      "ptd.preset2=1,2,A");
  kPresets.accepts("");
  Endpoint{kPresets.cgi, "", "presets="}.accepts("");
}

TEST(PtzPreset, ThereAreTenAndADeletedOneMakesRoom) {
  scripted().reset();
  for (char name = 'a'; name <= 'j'; ++name)
    EXPECT_EQ(request(kPreset.cgi, "act=add&name="s + name).status, 200) << name;
  EXPECT_TRUE(isFailure(request(kPreset.cgi, "act=add&name=C"), 400, {"name"}));
  for (const char* query : {"act=del&name=c", "act=add&name=C", "act=add&name=j"})
    EXPECT_EQ(request(kPreset.cgi, query).status, 200) << query;
  EXPECT_TRUE(request(kPresets.cgi, "").body.starts_with("presets=a,b,C,d,e,f,g,h,i,j&a=-40,0&"));
}

TEST(PtzSweep, StartsAndStops) {
  for (const auto& [endpoint, start] : {std::pair{&kAutoPan, "send ptd 34"}, {&kAutoPatrol, "send ptd 35"}}) {
    endpoint->accepts({{"act=go", "", "act=go", start},
                       {"act=stop", "", "act=stop", "send ptd 16"},
                       {"act=", "", "act=", ""}});
    endpoint->refuses("act=Go act=start act=go&!q=1 !act");
  }
}

std::string repeated(int times, const std::string& text) {
  std::string all;
  while (times-- > 0) all += (all.empty() ? "" : ",") + text;
  return all;
}

TEST(PtzRoute, IsToldByNamesAndStoredByNumbers) {
  const std::string twenty = "presets=" + repeated(20, "a");
  kRoute.accepts("presets=d-_.,a,d-_. presets=");
  kRoute.accepts({{"presets=,b,,a,", "", "presets=b,a"},
                  {twenty + repeated(5, ",a"), "", twenty},
                  {twenty + ",nobody", "", twenty},
                  {"", "route.stops=0,11,-1,3,x,,99999999999,2", "presets=b"},
                  {"", "route.stops=" + repeated(20, "2"), "presets=" + repeated(20, "b")}});
  kRoute.refuses("presets=nobody presets=a,B presets=a+b presets=a;b presets=" + repeated(240, "a") +
                 ",a presets=a&!q=1");
  kRoute.refuses("!", "route.stops=" + repeated(21, "1"), 500);
  scripted().reset(kRoute.state + " route.stops=");
  request(kRoute.cgi, "presets=d-_.,a,b");
  EXPECT_EQ(scripted().stored("route.stops"), "4,1,2");
}

// Zeros, but for what lies at some offsets.
std::string record(std::size_t size, const std::vector<std::pair<std::size_t, std::string>>& fields) {
  std::string bytes(size, '\0');
  for (const auto& [offset, field] : fields) bytes.replace(offset, field.size(), field);
  return bytes;
}

TEST(PtzChannel, AnswersAreReadFromTheseBytes) {
  scripted().reset();
  const std::string longest(31, 'n');
  daemons().answers = {{"get ptd 19", record(427, {{4, "\x82\0\x56\xFF\x5A\0\xE2\xFF"s}, {422, "xxxxx"}})},
                       {"get ptd 1", record(20, {{12, "\x56\xFF\xFF\xFF\x04\x03\x02\x01"}})},
                       {"get ptd 4", record(427, {{20, "xx" + longest},
                                                  {54, "\x82\0\0\0\x01"s},
                                                  {382, "z"},
                                                  {414, "\xFF\xFF\xFF\xFF\x80\xFF\xFF\xFFxxxxx"}})}};
  EXPECT_EQ(request(kInfo.cgi, "").body, kInfo.reply);
  EXPECT_EQ(request(kPos.cgi, "").body, "p=130&t=16909060&z=0");
  EXPECT_EQ(request(kPresets.cgi, "").body, "presets=" + longest + ",z&" + longest + "=-170,1&z=-39,-128");
  daemons().answers["get ptd 19"] = record(427, {{3, "\x01"}});
  EXPECT_TRUE(isFailure(request(kInfo.cgi, ""), 500));
}

}  // namespace
}  // namespace camera::test
