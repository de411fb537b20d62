// Runs the programs that put changed settings into effect.
#include "platform/store/actions.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "platform/descriptor.h"
#include "platform/log.h"
#include "platform/process.h"
#include "platform/text.h"

namespace camera {
namespace {

using Clock = std::chrono::steady_clock;

sigset_t only(int signal) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, signal);
  return set;
}

// Keeps SIGCHLD pending for sigtimedwait.
class ChildSignalHeld {
 public:
  ChildSignalHeld() {
    const sigset_t held = only(SIGCHLD);
    sigprocmask(SIG_BLOCK, &held, &oldMask_);
  }
  ~ChildSignalHeld() { sigprocmask(SIG_SETMASK, &oldMask_, nullptr); }
  ChildSignalHeld(const ChildSignalHeld&) = delete;
  ChildSignalHeld& operator=(const ChildSignalHeld&) = delete;

 private:
  ChildrenWaitable waitable_;
  sigset_t oldMask_{};
};

// False if the child still runs after the time.
bool waitFor(pid_t child, std::chrono::milliseconds time, int* status) {
  const auto deadline = Clock::now() + time;
  const sigset_t signal = only(SIGCHLD);
  while (waitpid(child, status, WNOHANG) == 0) {
    const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(deadline - Clock::now()).count();
    if (left <= 0) return false;
    const timespec rest{.tv_sec = static_cast<time_t>(left / 1'000'000'000),
                        .tv_nsec = static_cast<long>(left % 1'000'000'000)};
    sigtimedwait(&signal, nullptr, &rest);
  }
  return true;
}

// What a program prints must not reach the reply.
bool runAction(const std::string& program, int waitMilliseconds) {
  const ChildSignalHeld held;
  const Descriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  const char* const arguments[] = {program.c_str(), nullptr};
  pid_t child = -1;
  const int error =
      startProgram({arguments, "/usr/sbin:/usr/bin:/sbin:/bin", nothing.number(), nothing.number()}, &child);
  if (error != 0) {
    logDebug(joined({"action ", program, ": ", errorText(error)}));
    return false;
  }
  int status = 0;
  if (!waitFor(child, std::chrono::milliseconds(waitMilliseconds), &status)) {
    logDebug(joined({"action ", program, ": still running"}));
  } else if (status != 0) {
    logDebug(joined({"action ", program, ": wait status ", std::to_string(status)}));
  }
  return true;
}

}  // namespace

int runActions(SettingsStore& store, std::uint64_t set, const ActionRules& rules) {
  store.release();
  if (set == 0) return 0;
  const std::span<const RecordInfo* const> records = store.records();
  int started = 0;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if ((set >> i & 1) == 0) continue;
    const std::string program = rules.folder + "/" + records[i]->name;
    if (access(program.c_str(), X_OK) == 0 && runAction(program, rules.waitMilliseconds)) ++started;
  }
  return started;
}

}  // namespace camera
