// The command channel to the camera's daemons: one connection, one request and one reply per command.
#pragma once

#include <chrono>
#include <cstddef>

#include "platform/descriptor.h"

namespace camera {

inline constexpr char kIoDaemon[] = "/var/tmp/watchdog";  // digital inputs and outputs
inline constexpr char kEventDaemon[] = "/var/tmp/eventd";
inline constexpr char kPanTiltDaemon[] = "/var/tmp/ptd";

// Connects to the daemon that listens at the path (at most 107 bytes). Returns no descriptor, with errno set,
// if none listens or if it does not accept within the limit. A write to the connection fails after the same
// limit.
Descriptor connectToDaemon(const char* path, std::chrono::milliseconds limit);

class DaemonClient {
 public:
  // The limit is for all commands of this client together, from the start of the first.
  explicit DaemonClient(std::chrono::milliseconds limit = std::chrono::seconds(30)) : limit_(limit) {}

  // Connects to the daemon, writes the request, and reads until the reply is full or the daemon closes. The
  // rest of the reply is zero. False if the daemon cannot be reached, closes without a reply, or neither
  // fills the reply nor closes in time; the log has the reason.
  bool ask(const char* path, const void* request, std::size_t length, void* reply, std::size_t capacity);

 private:
  std::chrono::milliseconds limit_;
  std::chrono::steady_clock::time_point end_{};  // epoch: no command yet
};

// The client of this process, so that all commands of a request share one limit.
DaemonClient& daemonClient();

}  // namespace camera
