// The simulated daemons: how the head moves, what commands change, and how sockets can fail. The handlers'
// tests check the daemons' answers against the endpoints.
#include <gtest/gtest.h>

#include <future>

#include "platform/daemons/daemon_client.h"
#include "platform/little_endian.h"
#include "tests/support/temporary_folder.h"
#include "virtual-camera/simulator/control.h"
#include "virtual-camera/simulator/daemons.h"
#include "virtual-camera/simulator/packages.h"

namespace camera::simulator {
namespace {

// A head that moves ten units a second, with other limits in each direction.
HeadDesign lopsided() {
  HeadDesign design;
  EXPECT_TRUE(readHeadDesign(
      "# left out\npmax = 130\n pmin = -170 # far\ntmax = 90\ntmin = -30\nspeed = 10\n\ndwell = 2", &design));
  return design;
}

// A request in words: "2 PAN TILT", "6 SLOT NAME", "7 SLOT" and the like.
std::string headRequest(const std::string& text) {
  std::istringstream words{text};
  int code = 0, first = 0, second = 0;
  std::string name, bytes(kHeadRequest, '\0');
  words >> code >> first;
  storeLittle(&bytes[0], code);
  if (code == 6) {
    words >> name;
    storeLittle(&bytes[16], static_cast<std::int16_t>(first));
    name.copy(&bytes[18], 26);
  } else if (code == 7) {
    bytes[4] = static_cast<char>(first);
  } else {
    words >> second;
    storeLittle(&bytes[8], first);
    storeLittle(&bytes[12], second);
  }
  return bytes;
}

TEST(PanTiltDaemon, MovesTheHeadWithASpeedAndWithinItsLimits) {
  // A request, the seconds that then pass, and where the head is after them; the route is 10, 6, 3.
  std::istringstream steps{R"(
      2 30 5; 1; 10,5 moves| 1; 0.56; 16,5 moves| 1; 2; 30,5| 2 131 0; 1; refused 30,5|
      2 0 -31; 1; refused 30,5| 3 1000 0; 9; 120,5 moves| 5; 9; refused 130,5| 3 -2 -2; 1; 128,3|
      6 9 xxxxxxxxxxxxxxx; 0; 128,3| 8; 1; 118,0 moves| 16; 9; 118,0| 6 2 near; 0; 118,0|
      35; 1; 128,3 moves| 1; 2.5; 123,0 moves| 1; 3.5; 128,3 moves| 6 9; 3; 118,0 moves|
      7 9; 0; refused 118,0 moves| 6 2; 60; 118,0| 35; 0; refused 118,0| 34; 2.2; 120,0 moves|
      6 10 x; 30; refused -160,0 moves| 6 -1 x; 0; refused -160,0 moves|
      6 1 xxxxxxxxxxxxxxxx; 0; refused -160,0 moves| 24; 0.3; -157,0 moves| 25; 0; -157,0 moves|
      6 0 x; 1; -147,0 moves| 2 -170 5; 1; -157,5 moves| 24; 0; -157,5 moves| 7 0; 60; -157,0)"};
  CameraState camera;
  camera.head = Head{lopsided()};
  camera.route = [] { return "10,6,3"; };
  int kept = 0;
  camera.headChanged = [&] { ++kept; };
  for (std::string step; std::getline(steps >> std::ws, step, '|');) {
    const std::size_t first = step.find("; ");
    const std::size_t last = step.rfind("; ");
    const std::string answer = answerHead(camera, headRequest(step.substr(0, first)));
    camera.passTo(camera.now + std::stod(step.substr(first + 2)));
    const auto [pan, tilt] = camera.head.position();
    const std::string position = std::to_string(pan) + "," + std::to_string(tilt);
    EXPECT_EQ((answer[0] == 0 ? "" : "refused ") + position + (camera.head.moves() ? " moves" : ""),
              step.substr(last + 2))
        << step;
  }
  EXPECT_EQ(camera.head.home(), (Position{-170, 5})) << "where it went, not where it was";
  EXPECT_EQ(kept, 8) << "five presets, three homes";
}

TEST(Head, RemembersHomeAndPresets) {
  Head head{lopsided()};
  head.remember(
      "home 7 8\npreset3 -170 90 gate\npreset10 0 0 x\npreset4 131 0 y\npreset5 1 1\n\nhome\nhome 200 0\n");
  EXPECT_EQ(head.memory(), "home 7 8\npreset3 -170 90 gate\n");
  EXPECT_EQ(head.position(), (Position{7, 8})) << "it was switched on there";
}

TEST(IoDaemon, SwitchesTheOutputsThatThereAreAndLogsIt) {
  CameraState camera;
  camera.outputCount = 2;
  for (const auto& [code, result] : {std::pair{607, 0}, {607, 0}, {625, 0}, {608, 1}}) {
    std::string request(kShortRequest, '\0');
    storeLittle(request.data(), code);
    EXPECT_EQ(answerIo(camera, request)[0], result) << code;
  }
  EXPECT_EQ(camera.log.text(), " Digital Output 2 switched on\n Digital Output 2 switched off\n");
}

constexpr std::string_view kQuiet = "4:4:0:0 800000:0:30:0 ";

TEST(Control, ChangesTheNextPackages) {
  CameraState camera;
  Server server;
  std::size_t card = 0;
  const auto insert = [&](std::size_t state) { return card = state, ControlReply{true, ""}; };
  const Controlled target{camera, server, insert};
  // A command and the packages from then on; quiet: the camera does not record and hears little.
  std::istringstream rows{R"(
      motion 42 3 -> quiet 1:0:42:0| pir -> quiet 2:1:0:0| sound 70 -> 4:4:0:0 4000:0:70:0|
      level 31 -> 4:4:0:0 800000:0:31:0| level 30 -> quiet| input 4 on -> quiet 80:0:0:0|
      input 1 on -> quiet 10:0:0:0 80:0:0:0| input 4 off -> quiet 10:0:0:0| input 1 off -> quiet|
      recording on -> 4:0:0:0 800000:0:30:0| storage full -> 4:10:0:0 800000:0:30:0|
      storage ok -> 4:0:0:0 800000:0:30:0| recording off -> quiet| speaker occupied -> quiet 10000:0:0:0|
      mic muted -> quiet 10000:0:0:0 20000:0:0:0| speaker free -> quiet 20000:0:0:0| mic open -> quiet|
      card over_capacity -> quiet| log  a \x00\\ -> quiet)"};
  const auto shown = [&] {
    std::ostringstream out;
    for (const StatusPackage& p : statusPackages(camera))
      out << std::hex << p.event << ":" << p.flags << ":" << std::dec << p.value << ":" << p.value2 << " ";
    const std::string all = out.str();
    return all.starts_with(kQuiet) ? "quiet " + all.substr(kQuiet.size()) : all;
  };
  for (std::string row; std::getline(rows >> std::ws, row, '|');) {
    const std::size_t arrow = row.find(" -> ");
    EXPECT_TRUE(control(target, row.substr(0, arrow)).isDone) << row;
    EXPECT_EQ(shown(), row.substr(arrow + 4) + " ") << row;
    camera.passTo(camera.now + 10);
  }
  camera.outputs[1] = true;
  EXPECT_EQ(shown(), "quiet 200:0:0:1 ");
  EXPECT_EQ(card, 6U);
  EXPECT_TRUE(camera.log.text().ends_with(std::string(" a \0\\\n", 6)));

  camera.head = Head{lopsided()};
  camera.head.remember("home 30 10\n");
  const std::string before = control(target, "status").text + camera.log.text();
  EXPECT_TRUE(before.starts_with("head=-70,10\nhome=-70,10\n")) << "as the endpoints show it: " << before;
  const std::string longest = "log " + std::string(1000, 'x');
  const std::string longer = longest + "x";
  for (const char* bad :
       {"",           "nothing",   "motion",       "motion -1",       "motion 1000001",      "motion 1 2 3",
        "pir 0",      "pir 86401", "sound 256",    "level 256",       "input 0 on",          "input 5 on",
        "input 1 On", "storage",   "card none",    "daemon ptd down", "daemon status stale", "log",
        "log plain",  "log \\x0",  longer.c_str(), "status x"})
    EXPECT_FALSE(control(target, bad).isDone) << bad;
  EXPECT_EQ(control(target, "status").text + camera.log.text(), before);
  EXPECT_TRUE(control(target, longest).isDone && control(target, "motion 1000000 86400").isDone);
  camera.inputCount = 2;
  EXPECT_EQ(control(target, "input 3 on").text, "usage: input NUMBER on|off; NUMBER 1 to 2");
  camera.inputCount = camera.outputCount = 0;
  camera.hasPir = camera.hasMic = camera.hasSpeaker = camera.hasCard = camera.hasHead = false;
  for (const char* daemon : {"ptd", "watchdog"}) server.add({daemon, "", 3, {}});
  for (const char* missing : {"pir", "sound 1", "level 1", "mic muted", "speaker occupied", "card ready",
                              "input 1 on", "daemon ptd down", "daemon watchdog down"})
    EXPECT_TRUE(control(target, missing).text.starts_with("this product has no ")) << missing;
}

TEST(Server, BehavesTowardsItsClientsAsCommanded) {
  const test::TemporaryFolder folder;
  const std::string path = folder.path("socket");
  Server server;
  Daemon* daemon = server.add({"d", path, 3, [](const std::string& request) { return request + "ABC"; }});
  const std::string full = "abcABC";
  const std::pair<Behaviour, std::string> rows[] = {
      {Behaviour::kUp, full},      {Behaviour::kDown, ""},
      {Behaviour::kUp, full},      {Behaviour::kStale, ""},
      {Behaviour::kEndless, full}, {Behaviour::kClosing, ""},
      {Behaviour::kSilent, ""},    {Behaviour::kShort, std::string("a\0\0\0\0\0", 6)}};
  for (const auto& [behaviour, reply] : rows) {
    EXPECT_TRUE(server.behave(daemon, behaviour));
    std::string answer(6, 'x');
    auto asked = std::async(std::launch::async, [&] {
      return DaemonClient{std::chrono::seconds(1)}.ask(path.c_str(), "abc", 3, answer.data(), 6);
    });
    do server.serveUntil(Server::Clock::now() + std::chrono::milliseconds(10));
    while (asked.wait_for(std::chrono::seconds(0)) != std::future_status::ready);
    EXPECT_EQ(asked.get(), !reply.empty()) << static_cast<int>(behaviour);
    EXPECT_EQ(std::filesystem::exists(path), behaviour != Behaviour::kDown);
    EXPECT_TRUE(reply.empty() || answer == reply) << answer << static_cast<int>(behaviour);
  }
}

}  // namespace
}  // namespace camera::simulator
