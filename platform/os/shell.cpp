// Shell commands.
#include "platform/shell.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <span>

#include "platform/descriptor.h"
#include "platform/log.h"
#include "platform/process.h"
#include "platform/text.h"

namespace camera {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kPieceSize = 128;  // with its NUL

// Returns 0 or an errno value.
int startShell(const char* command, int output, pid_t* shell) {
  const char* path = std::getenv("PATH");
  const char* const arguments[] = {"/bin/sh", "-c", command, nullptr};
  const int error =
      startProgram({arguments, path == nullptr ? "/usr/bin:/bin" : path, STDIN_FILENO, output}, shell);
  if (error != 0) logDebug(joined({"/bin/sh: ", errorText(error)}));
  return error;
}

int waitFor(pid_t child) {
  int status = 0;
  pid_t ended = 0;
  do {
    ended = waitpid(child, &status, 0);
  } while (ended < 0 && errno == EINTR);
  return ended == child ? status : -1;
}

// False if nothing can be read before the end.
bool waitForOutput(int descriptor, Clock::time_point end) {
  pollfd entry{.fd = descriptor, .events = POLLIN, .revents = 0};
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    const int ready = left > 0 ? poll(&entry, 1, static_cast<int>(left)) : 0;
    if (ready >= 0 || errno != EINTR) return ready > 0;
  }
}

bool endsUntil(pid_t child, Clock::time_point end) {
  siginfo_t ended{};
  while (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         ended.si_pid == 0) {
    if (Clock::now() >= end) return false;
    usleep(1000);
  }
  return true;
}

// False if the output goes on after the end or the most bytes.
bool takePieces(int descriptor, Clock::time_point end, std::size_t left,
                void (*take)(const char* piece, void* context), void* context) {
  std::array<char, 4096> block;
  std::array<char, kPieceSize> piece;
  std::size_t size = 0;
  std::size_t count = 0;   // bytes of the piece, NULs included
  std::size_t length = 0;  // without NULs
  const auto give = [&] {
    piece[length] = '\0';
    take(piece.data(), context);
    count = length = 0;
  };
  bool isInTime = true;
  while (left > 0 && (isInTime = waitForOutput(descriptor, end)) &&
         readOnce(descriptor, block.data(), std::min(left, block.size()), &size) == 0 && size > 0) {
    left -= size;
    for (const char byte : std::span(block).first(size)) {
      ++count;
      if (byte != '\0') piece[length++] = byte;
      if (byte == '\n' || count == kPieceSize - 1) give();
    }
  }
  if (count > 0) give();
  return isInTime && left > 0;
}

}  // namespace

int runShell(const char* command) {
  const ChildrenWaitable waitable;
  pid_t shell = -1;
  return startShell(command, STDOUT_FILENO, &shell) == 0 ? waitFor(shell) : -1;
}

int readCommand(const char* command, void (*take)(const char* piece, void* context), void* context,
                const ReadLimits& limits) {
  const ChildrenWaitable waitable;
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return -1;
  const Descriptor reader(ends[0]);
  Descriptor writer(ends[1]);
  pid_t shell = -1;
  if (startShell(command, writer.number(), &shell) != 0) return -1;
  writer.close();
  const auto end = Clock::now() + limits.time;
  if (!takePieces(reader.number(), end, limits.bytes, take, context) || !endsUntil(shell, end)) {
    logDebug(joined({command, ": too slow or too long"}));
    kill(shell, SIGKILL);
  }
  return waitFor(shell);
}

}  // namespace camera
