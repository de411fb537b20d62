// The virtual camera's daemons in one process: digital I/O, events, pan/tilt, event log and status packages.
//
//   camera-simulator serve                            runs the daemons until it is killed
//   camera-simulator send DAEMON CODE [WORD [WORD]]   sends a command to a daemon and prints its answer
//   camera-simulator fill-card FOLDER                 creates recordings and snapshots
//   camera-simulator COMMAND...                       sends a command to the running simulator; see --help
//
// Under the name "simulator" it is a CGI program.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/card/card_state.h"
#include "platform/daemons/daemon_client.h"
#include "platform/descriptor.h"
#include "platform/file.h"
#include "platform/little_endian.h"
#include "platform/product/product_info.h"
#include "platform/shell.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/route.h"
#include "platform/store/settings.h"
#include "platform/text.h"
#include "virtual-camera/simulator/card.h"
#include "virtual-camera/simulator/client.h"
#include "virtual-camera/simulator/control.h"
#include "virtual-camera/simulator/daemons.h"
#include "virtual-camera/simulator/packages.h"
#include "virtual-camera/simulator/page.h"

namespace camera::simulator {
namespace {

constexpr char kDesign[] = "/etc/camera/head";
constexpr char kMemory[] = "/var/lib/camera/daemons/head";
constexpr char kNewMemory[] = "/var/lib/camera/daemons/head.new";
constexpr char kDaemonFolder[] = "/var/tmp/";
constexpr char kLogDaemon[] = "/var/tmp/logd";
constexpr int kFailed = 1;
constexpr std::chrono::milliseconds kStatusInterval{500};

int complain(const std::string& about, const std::string& problem) {
  (void)std::fprintf(stderr, "%s: %s\n", about.c_str(), problem.c_str());
  return kFailed;
}

std::string localTime() {
  ClockSettings time{};
  if (loadRecord(&time) != StoreResult::kDone) return "-";
  std::array<char, 64> text;
  (void)std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month,
                      time.day, time.hour, time.minute, time.second);
  return text.data();
}

std::string storedRoute() {
  RouteSettings route;
  return loadRecord(&route) == StoreResult::kDone ? route.stops : "";
}

void save(const Head& head) {
  const std::string memory = head.memory();
  const Descriptor file(open(kNewMemory, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
  int error = file.isOpen() ? writeAll(file.number(), memory.data(), memory.size()) : errno;
  if (error == 0 && rename(kNewMemory, kMemory) != 0) error = errno;
  if (error != 0) complain(kMemory, std::strerror(error));
}

// The state "recording" is not stored: it means a ready card while recording is enabled.
ControlReply setCard(std::size_t state) {
  const bool isRecordedTo = state == kRecording;
  const std::size_t stored = isRecordedTo ? std::size_t{kReady} : state;
  const std::string command = "camera-settings set sd state=" + std::to_string(stored) +
                              " 2>&1 && camera-settings set record enable=" + (isRecordedTo ? "1" : "0") +
                              " 2>&1";
  std::string printed;
  const int status = readCommand(
      command.c_str(), [](const char* piece, void* text) { static_cast<std::string*>(text)->append(piece); },
      &printed);
  return {status == 0, printed};
}

// Sets up the camera from its files. Uses the defaults for what cannot be read, and reports that.
void equip(CameraState* camera) {
  HeadDesign design;
  std::string text;
  const int error = readFile(kDesign, &text, ENOENT);
  if ((error != 0 && error != ENOENT) || !readHeadDesign(text, &design)) complain(kDesign, "malformed");
  camera->head = Head{design};
  if (readFile(kMemory, &text, ENOENT) == 0) camera->head.remember(text);
  if (const ProductInfo* product = productInfo(); product != nullptr) {
    camera->inputCount = std::min<std::size_t>(product->input_count, CameraState::kLines);
    camera->outputCount = std::min<std::size_t>(product->output_count, CameraState::kLines);
    camera->hasPir = product->has_pir;
    camera->hasMic = product->has_mic;
    camera->hasSpeaker = product->has_speaker;
    camera->hasCard = product->has_sdcard;
    camera->hasHead = product->has_pan_tilt;
  } else {
    complain("product information", "cannot be read");
  }
  camera->route = storedRoute;
  camera->headChanged = [camera] { save(camera->head); };
  camera->log.stamp = localTime;
}

double secondsSince(Server::Clock::time_point start) {
  return std::chrono::duration<double>(Server::Clock::now() - start).count();
}

int serve() {
  // A second one would take the sockets from the first.
  std::string answer;
  if (exchange(kControl, "status", &answer) == 0) return complain("serve", "the daemons run already");
  CameraState camera;
  equip(&camera);
  Server server;
  const Controlled controlled{camera, server, setCard};
  const auto start = Server::Clock::now();
  const auto asked = [&](auto answer) {
    return [&camera, start, answer](const std::string& request) {
      camera.passTo(secondsSince(start));
      return answer(camera, request);
    };
  };
  const auto told = [&](CameraState& /*camera*/, const std::string& command) {
    const ControlReply reply = control(controlled, command);
    return (reply.isDone ? kDone : kNotDone) + reply.text;
  };
  server.add({"watchdog", kIoDaemon, kShortRequest, asked(answerIo)});
  server.add({"eventd", kEventDaemon, kShortRequest, asked(answerEvents)});
  server.add({"ptd", kPanTiltDaemon, kHeadRequest, asked(answerHead)});
  server.add({"logd", kLogDaemon, kShortRequest, asked(answerLog)});
  server.add({"", kControl, 0, asked(told)});
  for (Daemon& daemon : server.daemons()) {
    if (!server.behave(&daemon, Behaviour::kUp)) return complain(daemon.path, std::strerror(errno));
  }
  PackageSender sender;
  if (!sender.open()) return complain("status packages", std::strerror(errno));
  for (auto next = start;;) {
    next = std::max(next + kStatusInterval, Server::Clock::now());
    server.serveUntil(next);
    camera.passTo(secondsSince(start));
    if (!camera.sendsStatus) continue;
    for (const StatusPackage& package : statusPackages(camera)) sender.send(package);
  }
}

int carryOut(const std::string& command) {
  ControlReply reply{};
  if (const int error = tell(command, &reply); error != 0) {
    return complain("sim: the daemons do not answer", std::strerror(error));
  }
  if (!reply.isDone) return complain("sim", reply.text);
  return writeAll(STDOUT_FILENO, reply.text.data(), reply.text.size()) == 0 ? 0 : kFailed;
}

// The camera's send_cmd runs this.
int send(const std::string& daemon, const std::vector<int>& words) {
  std::string request(kShortRequest, '\0');
  for (std::size_t i = 0; i < words.size(); ++i) storeLittle<std::int32_t>(&request[4 * i], words[i]);
  std::string answer;
  if (const int error = exchange((kDaemonFolder + daemon).c_str(), request, &answer); error != 0) {
    return complain(daemon, std::strerror(error));
  }
  return writeAll(STDOUT_FILENO, answer.data(), answer.size()) == 0 ? 0 : kFailed;
}

int help() {
  const std::string_view text = controlHelp();
  return writeAll(STDOUT_FILENO, text.data(), text.size()) == 0 ? 0 : kFailed;
}

int run(const std::vector<std::string>& arguments) {
  const std::string verb = arguments.empty() ? "--help" : arguments[0];
  if (verb == "--help" || verb == "-h") return help();
  if (verb == "serve" && arguments.size() == 1) return serve();
  if (verb == "fill-card" && arguments.size() == 2) {
    const int error = fillCard(arguments[1], std::time(nullptr));
    return error == 0 ? 0 : complain(arguments[1], std::strerror(error));
  }
  if (verb != "send") {
    std::string command = verb;
    for (std::size_t i = 1; i < arguments.size(); ++i) command += " " + arguments[i];
    return carryOut(command);
  }
  std::vector<int> words(arguments.size() > 2 ? arguments.size() - 2 : 0);
  bool isRequest = !words.empty() && words.size() <= kShortRequest / sizeof(std::int32_t);
  for (std::size_t i = 0; i < words.size(); ++i) {
    isRequest = isRequest && readNumber(arguments[i + 2], &words[i]);
  }
  return isRequest ? send(arguments[1], words) : complain("usage", "send DAEMON CODE [WORD [WORD]]");
}

}  // namespace
}  // namespace camera::simulator

int main(int count, char** arguments) {
  if (count > 0 && std::string_view{arguments[0]}.ends_with("/simulator")) {
    camera::simulator::serveRequest();
    return 0;
  }
  return camera::simulator::run({arguments + 1, arguments + count});
}
