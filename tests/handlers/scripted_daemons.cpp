// The camera's daemons on the scripted platform, linked in place of the sockets.
#include "tests/handlers/scripted_daemons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include "platform/little_endian.h"
#include "tests/handlers/scripted_platform.h"
#include "virtual-camera/simulator/daemons.h"

namespace camera::test {
namespace {

using simulator::Position;

constexpr struct {
  const char* path;
  std::size_t request;
  std::size_t reply;
  std::string (*answer)(simulator::CameraState& camera, const std::string& request);
} kDaemons[] = {{kPanTiltDaemon, 44, 427, simulator::answerHead},
                {kIoDaemon, 12, 140, simulator::answerIo},
                {kEventDaemon, 12, 140, simulator::answerEvents}};
constexpr int kQuestions[] = {1, 4, 19, 32, 615, 616, 617, 618, 620, 621, 622, 623};
constexpr double kArrival = 1000;  // seconds in which the head gets anywhere

template <class Number>
void takeNumber(std::string* bytes, std::size_t offset, std::string* call) {
  *call += " " + std::to_string(loadLittle<Number>(&(*bytes)[offset]));
  storeLittle(&(*bytes)[offset], Number{0});
}

// The call that a request stands for. All bytes that hold none of its words must be 0.
std::string callOf(const char* path, std::string bytes) {
  const int code = loadLittle<int>(bytes.data());
  const bool asks = std::count(std::begin(kQuestions), std::end(kQuestions), code) > 0;
  const bool isMove = path == kPanTiltDaemon && (code == 2 || code == 3);
  const bool isPreset = path == kPanTiltDaemon && code == 6;
  std::string call = std::string{asks ? "get " : "send "} + (std::strrchr(path, '/') + 1);
  takeNumber<std::int32_t>(&bytes, 0, &call);
  if (path == kEventDaemon) takeNumber<std::int32_t>(&bytes, 4, &call);
  if (path == kEventDaemon || isMove) takeNumber<std::int32_t>(&bytes, 8, &call);
  if (isMove) takeNumber<std::int32_t>(&bytes, 12, &call);
  if (path == kPanTiltDaemon && code == 7) takeNumber<std::uint8_t>(&bytes, 4, &call);
  if (isPreset) {
    takeNumber<std::int16_t>(&bytes, 16, &call);
    const std::string name = bytes.substr(18).c_str();
    std::fill_n(bytes.begin() + 18, name.size(), '\0');
    call += (name.empty() ? "" : " ") + name;
  }
  EXPECT_EQ(bytes, std::string(bytes.size(), '\0')) << call << " holds more than that";
  return call;
}

// Refuses a step beyond the limits, which the head would cut short: the endpoints must do that.
std::string answerOf(std::size_t daemon, const std::string& bytes) {
  simulator::CameraState& camera = daemons().camera;
  const Position from = camera.head.position();
  std::string answer = kDaemons[daemon].answer(camera, bytes);
  if (daemon != 0 || !camera.head.moves() || bytes[0] > 8) return answer;
  camera.passTo(camera.now + kArrival);
  const Position step{loadLittle<int>(&bytes[8]), loadLittle<int>(&bytes[12])};
  if (bytes[0] == 3 && camera.head.position() != Position{from.pan + step.pan, from.tilt + step.tilt})
    answer[0] = 1;
  return answer;
}

bool sendCommand(std::size_t daemon, const std::string& bytes, char* reply, std::size_t capacity) {
  const std::string call = callOf(kDaemons[daemon].path, bytes);
  const int result = scripted().answer(call);
  const auto other = daemons().answers.find(call);
  std::string answer(kDaemons[daemon].reply, '\0');
  if (other != daemons().answers.end())
    answer = other->second;
  else if (result != 0)
    storeLittle(answer.data(), result);
  else
    answer = answerOf(daemon, bytes);
  std::memset(reply, 0, capacity);
  answer.copy(reply, capacity);
  return result >= 0 && !answer.empty();
}

}  // namespace

ScriptedDaemons& daemons() {
  static ScriptedDaemons all;
  return all;
}

ScriptedDaemons::ScriptedDaemons() {
  store("ptd.limits",
        "130,-170,90,-30");  // not symmetric, so that mirroring a pan does more than change its sign
  camera.route = [] { return scripted().stored("route.stops"); };
}

void ScriptedDaemons::place(Position at) {
  EXPECT_TRUE(camera.head.moveTo(at)) << at.pan << "," << at.tilt;
  camera.passTo(camera.now + kArrival);
}

bool ScriptedDaemons::store(const std::string& name, const std::string& value) {
  std::string text = value;
  std::replace(text.begin(), text.end(), ',', ' ');
  std::istringstream words{text};
  words.unsetf(std::ios::basefield);
  std::vector<int> numbers;
  for (std::int64_t number = 0; words >> number;) numbers.push_back(static_cast<int>(number));
  numbers.resize(5);
  const Position at{numbers[0], numbers[1]};
  const Position before = camera.head.position();
  if (name == "ptd.limits") {
    camera.head = simulator::Head{{numbers[0], numbers[1], numbers[2], numbers[3], 40, 3}};
  } else if (name.starts_with("ptd.")) {
    place(at);
    if (name == "ptd.position") return true;
    if (name == "ptd.home")
      camera.head.setHome();
    else if (!camera.head.storePreset(std::stoi(name.substr(10)), value.substr(value.rfind(',') + 1)))
      return false;
    place(before);
  } else if (name == "io.inputs") {
    std::copy_n(numbers.begin(), 4, camera.inputs.begin());
  } else if (name == "io.outputs") {
    std::copy_n(numbers.begin(), 4, camera.outputs.begin());
  } else if (name == "package") {
    StatusPackage package{};
    package.event = static_cast<std::uint32_t>(numbers[1]);
    package.flags = static_cast<std::uint32_t>(numbers[2]);
    package.value = numbers[3];
    package.value2 = numbers[4];
    packages.emplace_back(numbers[0], package);
  } else {
    return false;
  }
  return true;
}

}  // namespace camera::test

namespace camera {

using test::daemons;

DaemonClient& daemonClient() {
  static DaemonClient client;
  return client;
}

bool DaemonClient::ask(const char* path, const void* request, std::size_t length, void* reply,
                       std::size_t capacity) {
  for (std::size_t i = 0; i < std::size(test::kDaemons); ++i) {
    const auto& known = test::kDaemons[i];
    if (std::strcmp(known.path, path) != 0 || known.request != length || known.reply != capacity) continue;
    const std::string bytes(static_cast<const char*>(request), length);
    return test::sendCommand(i, bytes, static_cast<char*>(reply), capacity);
  }
  ADD_FAILURE() << path << " is not asked with " << length << " bytes for " << capacity;
  return false;
}

void StatusReceiver::open() {
  daemons().began = daemons().clock;
  daemons().heard = 0;
}

// The clock goes on to the package that was waited for, or to the end.
bool StatusReceiver::wait(std::uint32_t events, StatusPackage* package, std::chrono::milliseconds time) {
  auto& all = daemons();
  all.mask = events;
  const std::int64_t end = all.clock + time.count();
  while (all.heard < all.packages.size() && all.began + all.packages[all.heard].first < end) {
    const auto& [milliseconds, arrived] = all.packages[all.heard++];
    all.clock = std::max(all.clock, all.began + milliseconds);
    if ((arrived.event & events) == 0) continue;
    *package = arrived;
    return true;
  }
  all.clock = end;
  return false;
}

int StatusReceiver::secondsSinceOpen() const {
  return static_cast<int>((daemons().clock - daemons().began) / 1000);
}

}  // namespace camera
