// The commands of `./run sim`.
#include "virtual-camera/simulator/control.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iomanip>
#include <iterator>
#include <sstream>

#include "framework/json.h"
#include "platform/card/card_state.h"
#include "platform/text.h"
#include "virtual-camera/simulator/daemons.h"

namespace camera::simulator {
namespace {

constexpr int kNoticedSeconds = 10;
constexpr std::size_t kLongestLine = 1000;  // bytes of a line that log adds

// What a number in a command may be. help.txt says it too.
struct Range {
  int low;
  int high;
};
constexpr Range kValue{0, 1'000'000};
constexpr Range kLevel{0, 255};
constexpr Range kSeconds{1, 86400};

// A part that not every product has.
struct Part {
  std::string_view name;
  bool (*isIn)(const CameraState& camera);
};
constexpr Part kPir{"infrared sensor", [](const CameraState& c) { return c.hasPir; }};
constexpr Part kMic{"microphone", [](const CameraState& c) { return c.hasMic; }};
constexpr Part kSpeaker{"speaker", [](const CameraState& c) { return c.hasSpeaker; }};
constexpr Part kCard{"SD card slot", [](const CameraState& c) { return c.hasCard; }};
constexpr Part kHead{"pan/tilt head", [](const CameraState& c) { return c.hasHead; }};
constexpr Part kInput{"digital input", [](const CameraState& c) { return c.inputCount > 0; }};
constexpr Part kIo{"digital input or output",
                   [](const CameraState& c) { return c.inputCount + c.outputCount > 0; }};

// What event_log.cgi finds in a line, by the first word of the command log.
constexpr struct {
  std::string_view word;
  std::string_view phrase;
} kLogKinds[] = {
    {"motion", "Event triggered by Motion Detection"},
    {"sound", "Event triggered by Sound Detection"},
    {"hot", "Event triggered by Hot Thermal Detection"},
    {"cold", "Event triggered by Cold Thermal Detection"},
    {"input", "Event triggered by Digital Input"},
    {"plain", ""},
};

constexpr std::string_view kOffOn[] = {"off", "on"};
constexpr std::string_view kStorages[] = {"ok", "full", "failed"};
constexpr std::string_view kSpeakerStates[] = {"free", "occupied"};
constexpr std::string_view kMicStates[] = {"open", "muted"};

// The words of a command, taken in order.
class Words {
 public:
  explicit Words(const std::string& text) : rest_{text} {}

  bool isOver() { return (rest_ >> std::ws).eof(); }
  std::string next() {
    std::string word;
    rest_ >> word;
    return word;
  }
  bool number(const Range& range, int* value) {
    return readNumber(next(), value) && *value >= range.low && *value <= range.high;
  }
  template <std::size_t N>
  bool choice(const std::string_view (&names)[N], std::size_t* index) {
    const std::string word = next();
    *index = static_cast<std::size_t>(std::find(names, names + N, word) - names);
    return *index < N && !word.empty();
  }
  template <std::size_t N>
  bool lastChoice(const std::string_view (&names)[N], std::size_t* index) {
    return choice(names, index) && isOver();
  }
  std::string text() {
    std::string all;
    std::getline(rest_ >> std::ws, all, '\0');
    return all;
  }

 private:
  std::istringstream rest_;
};

bool isMissing(const CameraState& camera, const Part* part, ControlReply* reply) {
  if (part == nullptr || part->isIn(camera)) return false;
  *reply = {false, "this product has no " + std::string(part->name)};
  return true;
}

// Returns false, with nothing changed, if the words are wrong.
using Command = bool (*)(const Controlled& target, Words& words, ControlReply* reply);

// Takes the last word, "[SECONDS]", and reports the detection for that time.
bool notice(const Controlled& target, Words& words, int value, Detection* detection) {
  int seconds = kNoticedSeconds;
  if (!words.isOver() && (!words.number(kSeconds, &seconds) || !words.isOver())) return false;
  *detection = {value, target.camera.now + seconds};
  return true;
}

bool tellMotion(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  int value = 0;
  if (!words.number(kValue, &value) || !notice(target, words, value, &target.camera.motion)) return false;
  target.camera.log.add("Event triggered by Motion Detection");
  return true;
}

bool tellPir(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  if (!notice(target, words, 0, &target.camera.pir)) return false;
  target.camera.log.add("Event triggered by PIR Sensor");
  return true;
}

bool tellSound(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  int level = 0;
  if (!words.number(kLevel, &level) || !notice(target, words, level, &target.camera.sound)) return false;
  target.camera.log.add("Event triggered by Sound Detection");
  return true;
}

bool tellLevel(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  int level = 0;
  if (!words.number(kLevel, &level) || !words.isOver()) return false;
  target.camera.soundLevel = level;
  return true;
}

bool tellInput(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  int number = 0;
  std::size_t state = 0;
  const Range numbers{1, static_cast<int>(target.camera.inputCount)};
  if (!words.number(numbers, &number) || !words.lastChoice(kOffOn, &state)) return false;
  setInput(target.camera, static_cast<std::size_t>(number - 1), state == 1);
  return true;
}

bool tellStorage(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  std::size_t state = 0;
  if (!words.lastChoice(kStorages, &state)) return false;
  target.camera.storage = static_cast<Storage>(state);
  return true;
}

template <bool CameraState::*state, auto& names>
bool turn(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  std::size_t index = 0;
  if (!words.lastChoice(names, &index)) return false;
  target.camera.*state = index == 1;
  return true;
}

bool tellCard(const Controlled& target, Words& words, ControlReply* reply) {
  std::size_t code = 0;
  if (!words.lastChoice(kCardWords, &code)) return false;
  *reply = target.setCard(code);
  return true;
}

// The part without which the daemon has nothing to do; null if every product needs it.
const Part* partOf(const Daemon& daemon) {
  if (daemon.name == "ptd") return &kHead;
  return daemon.name == "watchdog" ? &kIo : nullptr;
}

bool tellDaemon(const Controlled& target, Words& words, ControlReply* reply) {
  const std::string name = words.next();
  std::size_t behaviour = 0;
  std::list<Daemon>& daemons = target.server.daemons();
  const auto daemon =
      std::find_if(daemons.begin(), daemons.end(), [&](const Daemon& d) { return d.name == name; });
  const bool isStatus = name == kStatusSender;
  if ((daemon == daemons.end() && !isStatus) || !words.lastChoice(kBehaviours, &behaviour)) return false;
  if (isStatus && behaviour > 1) return false;  // it has no clients
  if (!isStatus && isMissing(target.camera, partOf(*daemon), reply)) return true;
  if (isStatus) {
    target.camera.sendsStatus = behaviour == 0;
  } else if (!target.server.behave(&*daemon, static_cast<Behaviour>(behaviour))) {
    *reply = {false, daemon->path + ": " + std::strerror(errno)};
  }
  return true;
}

// Replaces two backslashes by one, and \xNN by that byte. False for any other escape.
bool unescape(std::string_view text, std::string* plain) {
  while (!text.empty()) {
    const bool escaped = text.starts_with('\\');
    const bool hexadecimal = text.starts_with("\\x");
    std::uint8_t byte = static_cast<std::uint8_t>(text[0]);
    if (hexadecimal && (text.size() < 4 || !readNumber(text.substr(2, 2), &byte, 16))) return false;
    if (escaped && !hexadecimal && !text.starts_with("\\\\")) return false;
    plain->push_back(static_cast<char>(byte));
    text.remove_prefix(hexadecimal ? 4 : escaped ? 2 : 1);
  }
  return true;
}

bool tellLog(const Controlled& target, Words& words, ControlReply* /*reply*/) {
  std::string text = words.text();
  std::string_view rest = text;
  const std::string_view first = takeUntil(' ', &rest);
  const auto* kind = std::find_if(std::begin(kLogKinds), std::end(kLogKinds),
                                  [first](const auto& k) { return k.word == first; });
  std::string line;
  if (kind != std::end(kLogKinds)) {
    line = kind->phrase;
    if (!line.empty() && !rest.empty()) line += ": ";
  } else {
    rest = text;
  }
  if (!unescape(rest, &line) || line.empty() || line.size() > kLongestLine) return false;
  target.camera.log.add(line);
  return true;
}

std::ostream& operator<<(std::ostream& out, Position position) {
  return out << position.pan << "," << position.tilt;
}

void tellLines(std::ostream& out, const char* name, const std::array<bool, CameraState::kLines>& lines,
               std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) out << name << i + 1 << "=" << kOffOn[lines[i] ? 1 : 0] << "\n";
}

// Shows positions as the endpoints do, which mirror the pan.
void tellHead(std::ostream& out, const Head& head) {
  const auto shown = [&design = head.design()](Position at) {
    return Position{design.pmin + design.pmax - at.pan, at.tilt};
  };
  out << "head=" << shown(head.position()) << (head.moves() ? " moving" : "") << "\n"
      << "home=" << shown(head.home()) << "\n";
  for (const auto& [name, at] : head.presets()) {
    if (!name.empty()) out << "preset." << name << "=" << shown(at) << "\n";
  }
}

bool tellStatus(const Controlled& target, Words& words, ControlReply* reply) {
  if (!words.isOver()) return false;
  const CameraState& camera = target.camera;
  std::ostringstream out;
  if (camera.hasHead) tellHead(out, camera.head);
  tellLines(out, "input", camera.inputs, camera.inputCount);
  tellLines(out, "output", camera.outputs, camera.outputCount);
  const bool loud = camera.isNoticed(camera.sound);
  out << "softwareinput=" << kOffOn[camera.softwareInput ? 1 : 0] << "\n"
      << "motion=" << (camera.isNoticed(camera.motion) ? std::to_string(camera.motion.value) : "off") << "\n"
      << "recording=" << kOffOn[camera.recording ? 1 : 0] << "\n"
      << "storage=" << kStorages[static_cast<std::size_t>(camera.storage)] << "\n";
  if (camera.hasPir) out << "pir=" << kOffOn[camera.isNoticed(camera.pir) ? 1 : 0] << "\n";
  if (camera.hasSpeaker) out << "speaker=" << kSpeakerStates[camera.speakerOccupied ? 1 : 0] << "\n";
  if (camera.hasMic) {
    out << "sound=" << (loud ? std::to_string(camera.sound.value) : "off") << "\n"
        << "level=" << camera.soundLevel << "\n"
        << "mic=" << kMicStates[camera.micMuted ? 1 : 0] << "\n";
  }
  for (const Daemon& daemon : target.server.daemons()) {
    const Part* part = partOf(daemon);
    if (daemon.name.empty() || (part != nullptr && !part->isIn(camera))) continue;
    out << "daemon." << daemon.name << "=" << kBehaviours[static_cast<std::size_t>(daemon.behaviour)] << "\n";
  }
  out << "daemon." << kStatusSender << "=" << (camera.sendsStatus ? "up" : "down") << "\n";
  reply->text = out.str();
  return true;
}

constexpr struct {
  std::string_view name;
  Command command;
  const Part* part = nullptr;  // without which the command is refused
} kCommands[] = {
    {"motion", tellMotion},
    {"pir", tellPir, &kPir},
    {"sound", tellSound, &kMic},
    {"level", tellLevel, &kMic},
    {"input", tellInput, &kInput},
    {"storage", tellStorage},
    {"recording", turn<&CameraState::recording, kOffOn>},
    {"speaker", turn<&CameraState::speakerOccupied, kSpeakerStates>, &kSpeaker},
    {"mic", turn<&CameraState::micMuted, kMicStates>, &kMic},
    {"card", tellCard, &kCard},
    {"daemon", tellDaemon},
    {"log", tellLog},
    {"status", tellStatus},
};

// ./run prints this text too, without its first and last line.
constexpr std::string_view kHelp =
#include "virtual-camera/simulator/help.txt"
    ;

// The command, its arguments and their ranges, from its line of the help.
std::string usage(const std::string& name, const CameraState& camera) {
  constexpr std::string_view kIndent = "\n  ";
  const std::size_t spaced = kHelp.find(std::string(kIndent) + name + " ");
  const std::size_t alone = kHelp.find(std::string(kIndent) + name + "\n");
  const std::string_view line = kHelp.substr(std::min(spaced, alone) + kIndent.size());
  std::string text(line.substr(0, line.find('\n')));
  if (name == "input") text.back() = static_cast<char>('0' + camera.inputCount);  // of this product
  return text;
}

// The sentences below the command's line of the help, in one line.
std::string explanation(const std::string& name) {
  constexpr std::string_view kIndent = "        ";
  std::string_view rest = kHelp.substr(kHelp.find("\n  " + name + " ") + 1);
  takeUntil('\n', &rest);
  std::string text;
  while (rest.starts_with(kIndent)) {
    std::string_view line = takeUntil('\n', &rest);
    line.remove_prefix(kIndent.size());
    text.append(text.empty() ? "" : " ").append(line);
  }
  return text;
}

std::string listCommands(const CameraState& camera) {
  JsonArray commands;
  for (const auto& known : kCommands) {
    if (known.command == tellStatus || (known.part != nullptr && !known.part->isIn(camera))) continue;
    const std::string name{known.name};
    JsonObject command;
    command.add("name", name);
    command.add("usage", usage(name, camera));
    command.add("help", explanation(name));
    commands.add(command.text());
  }
  return commands.text();
}

}  // namespace

ControlReply control(const Controlled& controlled, const std::string& command) {
  if (command == kListCommands) return {true, listCommands(controlled.camera)};
  Words words{command};
  const std::string name = words.next();
  for (const auto& known : kCommands) {
    if (known.name != name) continue;
    ControlReply reply{true, ""};
    if (isMissing(controlled.camera, known.part, &reply)) return reply;
    if (known.command(controlled, words, &reply)) return reply;
    return {false, "usage: " + usage(name, controlled.camera)};
  }
  return {false, "no command " + name + "; see --help"};
}

std::string_view controlHelp() {
  return kHelp.substr(1);
}

}  // namespace camera::simulator
