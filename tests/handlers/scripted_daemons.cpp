// The camera's daemons on the scripted platform, linked in place of the sockets.
#include "tests/handlers/scripted_daemons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include "platform/daemons/little_endian.h"
#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr int kDone = 0;
constexpr int kRefused = 1;

// A request as it is read: the call that it stands for, and what is left when everything read is zeroed.
class Request {
 public:
  Request(std::string verb, const char* daemon, std::string bytes)
      : call{verb + " " + daemon}, rest{std::move(bytes)} {}

  template <class Number>
  int number(std::size_t offset) {
    const auto value = loadLittle<Number>(&rest[offset]);
    storeLittle(&rest[offset], Number{0});
    call += " " + std::to_string(value);
    return value;
  }
  HeadPosition position() {
    const int pan = number<std::int32_t>(8);
    return {pan, number<std::int32_t>(12)};
  }
  std::string name() {
    const std::string value = rest.substr(18).c_str();
    std::fill_n(rest.begin() + 18, value.size(), '\0');
    if (!value.empty()) call += " " + value;
    return value;
  }

  std::string call;
  std::string rest;
};

void storePosition(const HeadPosition& position, char* bytes) {
  storeLittle(bytes, position.pan);
  storeLittle(bytes + 4, position.tilt);
}

int moveTo(HeadPosition target) {
  const auto [pmax, pmin, tmax, tmin] = daemons().limits;
  const bool reached = target.pan >= pmin && target.pan <= pmax && target.tilt >= tmin && target.tilt <= tmax;
  if (reached) daemons().position = target;
  return reached ? kDone : kRefused;
}

void tellLimits(char* reply) {
  for (std::size_t i = 0; i < 4; ++i) {
    storeLittle(reply + 4 + 2 * i, static_cast<std::int16_t>(daemons().limits[i]));
  }
}

void tellPresets(char* reply) {
  for (const auto& [name, position] : daemons().presets) {
    name.copy(reply + 22, 31);
    storePosition(position, reply + 54);
    reply += 40;
  }
}

// Each carries a request out, fills the answer and gives its result word.
int askHead(Request& request, char* reply) {
  ScriptedDaemons& head = daemons();
  const auto preset = [&](int slot) { return head.presets.begin() + std::clamp(slot, 0, 9); };
  switch (const int code = request.number<std::int32_t>(0)) {
    case 1:
      return storePosition(head.position, reply + 12), kDone;
    case 4:
      return tellPresets(reply), kDone;
    case 19:
      return tellLimits(reply), kDone;
    case 32:
      return storePosition(head.home, reply + 12), kDone;
    case 2:
      return moveTo(request.position());
    case 3: {
      const HeadPosition step = request.position();
      return moveTo({head.position.pan + step.pan, head.position.tilt + step.tilt});
    }
    case 6: {
      const int slot = request.number<std::int16_t>(16);
      *preset(slot) = {request.name(), head.position};
      return slot < 0 || slot > 9 ? kRefused : kDone;
    }
    case 7: {
      const int slot = request.number<std::uint8_t>(4);
      return slot > 9 || preset(slot)->first.empty() ? kRefused : moveTo(preset(slot)->second);
    }
    case 8:
      return moveTo(head.home);
    case 24:
      return head.home = head.position, kDone;
    case 25:
      return head.home = {}, kDone;
    default:
      return code == 16 || code == 34 || code == 35 ? kDone : kRefused;
  }
}

int askIo(Request& request, char* reply) {
  const int code = request.number<std::int32_t>(0);
  const auto line = [code](std::array<int, 4>& lines, int first) -> int* {
    return code < first || code > first + 3 ? nullptr : &lines[static_cast<std::size_t>(code - first)];
  };
  if (int* on = line(daemons().outputs, 606)) return *on = 1, kDone;
  if (int* off = line(daemons().outputs, 624)) return *off = 0, kDone;
  for (const int* state : {line(daemons().inputs, 615), line(daemons().outputs, 620)}) {
    if (state != nullptr) return storeLittle(reply + 4, *state), kDone;
  }
  return kRefused;
}

int askEvents(Request& request, char* /*reply*/) {
  const int code = request.number<std::int32_t>(0);
  request.number<std::int32_t>(4);
  request.number<std::int32_t>(8);
  return code == 9 ? kDone : kRefused;
}

constexpr struct {
  const char* path;
  std::size_t request;
  std::size_t reply;
  int (*ask)(Request& request, char* reply);
} kDaemons[] = {
    {kPanTiltDaemon, 44, 427, askHead}, {kIoDaemon, 12, 140, askIo}, {kEventDaemon, 12, 140, askEvents}};
constexpr int kQuestions[] = {1, 4, 19, 32, 615, 616, 617, 618, 620, 621, 622, 623};

int sendCommand(std::size_t daemon, const std::string& bytes, char* reply, std::size_t capacity) {
  const auto& [path, requestSize, replySize, ask] = kDaemons[daemon];
  const bool asks =
      std::count(std::begin(kQuestions), std::end(kQuestions), loadLittle<int>(bytes.data())) > 0;
  daemons().requests.push_back(bytes);
  const ScriptedDaemons before = daemons();
  Request request{asks ? "get" : "send", std::strrchr(path, '/') + 1, bytes};
  std::string answer(replySize, '\0');
  storeLittle(answer.data(), ask(request, answer.data()));
  EXPECT_EQ(request.rest, std::string(bytes.size(), '\0')) << request.call << " holds more than that";

  const int result = scripted().answer(request.call);
  const auto other = before.answers.find(request.call);
  const bool isScripted = other != before.answers.end();
  if (result != 0 || isScripted) daemons() = before;
  if (result != 0) storeLittle(answer.assign(replySize, '\0').data(), result);
  if (isScripted) answer = other->second;
  std::memset(reply, 0, capacity);
  answer.copy(reply, capacity);
  return result < 0 ? result : answer.empty() ? -1 : 0;
}

}  // namespace

ScriptedDaemons& daemons() {
  static ScriptedDaemons all;
  return all;
}

bool ScriptedDaemons::store(const std::string& name, const std::string& value) {
  std::string text = value;
  std::replace(text.begin(), text.end(), ',', ' ');
  std::istringstream words{text};
  words.unsetf(std::ios::basefield);
  if (name.starts_with("ptd.preset")) {
    auto& [called, at] = presets.at(std::stoul(name.substr(10)));
    return !(words >> at.pan >> at.tilt >> called).fail();
  }
  std::vector<int> numbers;
  for (std::int64_t number = 0; words >> number;) numbers.push_back(static_cast<int>(number));
  numbers.resize(5);
  if (name == "ptd.limits")
    std::copy_n(numbers.begin(), 4, limits.begin());
  else if (name == "ptd.position")
    position = {numbers[0], numbers[1]};
  else if (name == "ptd.home")
    home = {numbers[0], numbers[1]};
  else if (name == "io.inputs")
    std::copy_n(numbers.begin(), 4, inputs.begin());
  else if (name == "io.outputs")
    std::copy_n(numbers.begin(), 4, outputs.begin());
  else if (name != "package")
    return false;
  if (name != "package") return true;
  _MultiCastPackage_ package{};
  package.event = static_cast<std::uint32_t>(numbers[1]);
  package.flags = static_cast<std::uint32_t>(numbers[2]);
  package.value = numbers[3];
  package.value2 = numbers[4];
  packages.emplace_back(numbers[0], package);
  return true;
}

}  // namespace camera::test

using camera::test::daemons;

int DomainSocket::open(const char* /*path*/) {
  return -1;
}

void DomainSocket::close() {}

int IpcClient::send_cmd(const char* path, const void* request, std::size_t length, void* reply,
                        std::size_t capacity) {
  for (std::size_t i = 0; i < std::size(camera::test::kDaemons); ++i) {
    const auto& known = camera::test::kDaemons[i];
    if (std::strcmp(known.path, path) != 0 || known.request != length || known.reply != capacity) continue;
    const std::string bytes(static_cast<const char*>(request), length);
    return camera::test::sendCommand(i, bytes, static_cast<char*>(reply), capacity);
  }
  ADD_FAILURE() << path << " is not asked with " << length << " bytes for " << capacity;
  return -1;
}

MultiReceiver::~MultiReceiver() = default;

int MultiReceiver::Init(int /*reserved*/) {
  daemons().began = daemons().clock;
  daemons().heard = 0;
  return 0;
}

// The clock goes on to the package that was waited for, or to the end.
int MultiReceiver::Wait(std::uint32_t events, _MultiCastPackage_* package, int seconds, int microseconds) {
  auto& all = daemons();
  all.mask = events;
  const std::int64_t end = all.clock + seconds * 1000 + microseconds / 1000;
  while (all.heard < all.packages.size() && all.began + all.packages[all.heard].first < end) {
    const auto& [milliseconds, arrived] = all.packages[all.heard++];
    all.clock = std::max(all.clock, all.began + milliseconds);
    if ((arrived.event & events) == 0) continue;
    *package = arrived;
    return 0;
  }
  all.clock = end;
  return -1;
}

int MultiReceiver::secondsSinceInit() const {
  return static_cast<int>((daemons().clock - daemons().began) / 1000);
}
