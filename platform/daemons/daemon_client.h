// The command channel to the camera's daemons: one connection, one request and one answer per command.
#pragma once

#include <chrono>
#include <cstddef>

#include "platform/descriptor.h"

namespace camera {

inline constexpr char kIoDaemon[] = "/var/tmp/watchdog";  // digital inputs and outputs
inline constexpr char kEventDaemon[] = "/var/tmp/eventd";
inline constexpr char kPanTiltDaemon[] = "/var/tmp/ptd";

// Connects to the daemon that listens at the path (at most 107 bytes). None, with errno, if nobody listens or
// accepts within the limit. A write to the connection fails after the same limit.
Descriptor connectToDaemon(const char* path, std::chrono::milliseconds limit);

class DaemonClient {
 public:
  // All commands of a client together may take that long, counted from the first.
  explicit DaemonClient(std::chrono::milliseconds limit = std::chrono::seconds(30)) : limit_(limit) {}

  // Connects to the daemon, writes the request, and reads until the reply is full or the daemon closes. What
  // the daemon did not fill is zero. False if it could not be reached, answered nothing, or neither filled
  // the reply nor closed in time; the log says which.
  bool ask(const char* path, const void* request, std::size_t length, void* reply, std::size_t capacity);

 private:
  std::chrono::milliseconds limit_;
  std::chrono::steady_clock::time_point end_{};  // epoch: no command yet
};

// The client of this process: the commands of a request share its time.
DaemonClient& daemonClient();

}  // namespace camera
