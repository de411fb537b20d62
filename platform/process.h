// Starting programs that inherit nothing of the request, and waiting for them.
#pragma once

#include <sys/types.h>

#include <csignal>

namespace camera {

// Sets SIGCHLD to its default while it lives. A process that inherits an ignored SIGCHLD from the web server
// cannot wait for its children.
class ChildrenWaitable {
 public:
  ChildrenWaitable();
  ~ChildrenWaitable() { sigaction(SIGCHLD, &before_, nullptr); }
  ChildrenWaitable(const ChildrenWaitable&) = delete;
  ChildrenWaitable& operator=(const ChildrenWaitable&) = delete;

 private:
  struct sigaction before_ {};
};

// What a program starts with. It also inherits standard error and the working directory.
struct Start {
  const char* const* arguments;  // the first is the program's path; a null pointer follows the last
  const char* searchPath;        // PATH, which is all of the environment
  int input;                     // descriptors
  int output;
};

// Starts a program with no signal blocked, and SIGPIPE and SIGCHLD at their defaults. Returns 0 or an errno
// value.
int startProgram(const Start& start, pid_t* child);

}  // namespace camera
