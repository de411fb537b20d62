// Starting programs that inherit nothing of the request.
#include "platform/process.h"

#include <spawn.h>
#include <unistd.h>

#include <string>

namespace camera {

ChildrenWaitable::ChildrenWaitable() {
  struct sigaction byDefault {};
  byDefault.sa_handler = SIG_DFL;
  sigaction(SIGCHLD, &byDefault, &before_);
}

int startProgram(const Start& start, pid_t* child) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, start.input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&files, start.output, STDOUT_FILENO);

  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(&attributes, &signals);
  sigaddset(&signals, SIGPIPE);
  sigaddset(&signals, SIGCHLD);
  posix_spawnattr_setsigdefault(&attributes, &signals);

  std::string path = std::string("PATH=") + start.searchPath;
  char* const environment[] = {path.data(), nullptr};
  // The call changes no argument; its type is older than const.
  const int error = posix_spawn(child, start.arguments[0], &files, &attributes,
                                const_cast<char* const*>(start.arguments), environment);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  return error;
}

}  // namespace camera
