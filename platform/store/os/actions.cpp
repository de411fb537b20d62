// Runs the programs that bring a change of settings into effect.
#include "platform/store/actions.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>

#include "platform/default_signal.h"
#include "platform/log.h"

namespace camera {
namespace {

using Clock = std::chrono::steady_clock;

sigset_t only(int signal) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, signal);
  return set;
}

// Keeps SIGCHLD pending for sigtimedwait. The web server may have handed down that it is ignored, and then no
// child could be waited for.
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
  DefaultSignal byDefault_{SIGCHLD};
  sigset_t oldMask_{};
};

// Starts the program as it would start from a shell, whatever signals this process has blocked or ignores,
// and with nothing that could reach the reply. Returns 0 or an errno value.
int start(const std::string& program, pid_t* child) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  const sigset_t byDefault = only(SIGPIPE);
  posix_spawnattr_setsigdefault(&attributes, &byDefault);
  sigset_t blocked;
  sigemptyset(&blocked);
  posix_spawnattr_setsigmask(&attributes, &blocked);

  std::string path = program;
  std::string search = "PATH=/usr/sbin:/usr/bin:/sbin:/bin";
  char* const arguments[] = {path.data(), nullptr};
  char* const environment[] = {search.data(), nullptr};
  const int error = posix_spawn(child, path.c_str(), &files, &attributes, arguments, environment);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  return error;
}

// False when the child still runs after the time.
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

bool runAction(const std::string& program, int waitMilliseconds) {
  pid_t child = -1;
  if (const int error = start(program, &child); error != 0) {
    logDebug("action %s: %s", program.c_str(), std::strerror(error));
    return false;
  }
  int status = 0;
  if (!waitFor(child, std::chrono::milliseconds(waitMilliseconds), &status)) {
    logDebug("action %s: still running", program.c_str());
  } else if (status != 0) {
    logDebug("action %s: wait status 0x%x", program.c_str(), static_cast<unsigned>(status));
  }
  return true;
}

}  // namespace

int runActions(std::uint64_t set, std::span<const RecordInfo* const> records, const ActionRules& rules) {
  if (set == 0) return 0;
  const ChildSignalHeld held;
  int started = 0;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if ((set >> i & 1) == 0) continue;
    const std::string program = rules.folder + "/" + records[i]->name;
    if (access(program.c_str(), X_OK) == 0 && runAction(program, rules.waitMilliseconds)) ++started;
  }
  return started;
}

}  // namespace camera
