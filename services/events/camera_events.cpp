// The camera's status packages as server-sent events.
//
//   camera-events             as a CGI program: one listener's stream
//   camera-events record      keeps the last events and serves the listeners, until it is killed
//   camera-events disconnect  ends all streams; their listeners have to log in again
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "framework/reply.h"
#include "framework/request.h"
#include "platform/daemons/daemon_client.h"
#include "platform/text.h"
#include "services/events/recorder.h"

namespace camera::events {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kConnectTime{5};
constexpr std::chrono::seconds kPatience{10};  // with a listener that does not read
// Then the listener has to connect again, and to show that it still may.
constexpr std::chrono::hours kLongestStream{1};
constexpr std::string_view kHeader = "Content-Type: text/event-stream\r\nCache-Control: no-store\r\n\r\n";

// Returns no descriptor if the recorder does not take the line.
Descriptor sendToRecorder(const std::string& line) {
  Descriptor recorder = connectToDaemon(kRecorder, kConnectTime);
  const bool isSent = recorder.isOpen() && send(recorder.number(), line.data(), line.size(), MSG_NOSIGNAL) ==
                                               static_cast<ssize_t>(line.size());
  return isSent ? std::move(recorder) : Descriptor();
}

// Waits for events from the recorder. False if the listener or the recorder goes, or if that time is over.
bool receive(const Descriptor& recorder, Clock::time_point end, std::array<char, 16384>* block,
             std::size_t* length) {
  pollfd entries[] = {{recorder.number(), POLLIN, 0}, {STDOUT_FILENO, 0, 0}};
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
  if (left <= 0 || poll(entries, 2, static_cast<int>(left)) <= 0 || entries[1].revents != 0) return false;
  return readOnce(recorder.number(), block->data(), block->size(), length) == 0 && *length > 0;
}

// Returns the reason why the request is refused; empty if it is not.
std::string refusal(const CgiVariables& variables) {
  Request request;
  readRequest(variables, false, &request);
  if (!request.error.empty()) return request.error;
  if (!request.params.empty()) return request.params.begin()->first + ": no such parameter";
  return variables.method == "POST" ? "events can only be read" : "";
}

void serveListener() {
  const CgiVariables variables = cgiVariables();
  if (const std::string reason = refusal(variables); !reason.empty()) {
    return Reply().sendFailure(400, "", reason);
  }
  const char* const given = std::getenv("HTTP_LAST_EVENT_ID");
  std::int64_t last = 0;
  const bool resumes = given != nullptr && readInteger(given, 10, &last) && last >= 0;
  const Descriptor recorder =
      sendToRecorder(kListen + (resumes ? " " + std::to_string(last) : std::string{}) + "\n");
  if (!recorder.isOpen()) return Reply().sendFailure(503, "", "the recorder of the events does not run");

  std::array<char, 16384> block;
  std::size_t length = 0;
  if (!receive(recorder, Clock::now() + kConnectTime, &block, &length)) {
    return Reply().sendFailure(503, "", "at most " + std::to_string(kMostListeners) + " listeners");
  }
  (void)fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
  const auto end = Clock::now() + kLongestStream;
  bool isRead = writeInTime(STDOUT_FILENO, kHeader, kPatience);
  while (isRead && variables.method != "HEAD") {
    isRead = writeInTime(STDOUT_FILENO, {block.data(), length}, kPatience) &&
             receive(recorder, end, &block, &length);
  }
}

int record() {
  Recorder recorder;
  if (const int error = recorder.open(kRecorder); error != 0) {
    (void)std::fprintf(stderr, "camera-events: %s: %s\n", kRecorder, std::strerror(error));
    return 1;
  }
  recorder.run();
}

// Returns when the streams have ended.
int disconnect() {
  const Descriptor recorder = sendToRecorder(std::string{kDisconnect} + "\n");
  std::string nothing;
  return recorder.isOpen() && readAll(recorder.number(), &nothing) == 0 ? 0 : 1;
}

}  // namespace
}  // namespace camera::events

int main(int count, char** arguments) {
  (void)std::signal(SIGPIPE, SIG_IGN);
  const std::string_view verb = count > 1 ? arguments[1] : "";
  if (verb == "record") return camera::events::record();
  if (verb == "disconnect") return camera::events::disconnect();
  (void)prctl(PR_SET_PDEATHSIG, SIGTERM);  // the web server may end first
  camera::events::serveListener();
  return 0;
}
