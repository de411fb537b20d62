// The client side of the simulator's sockets.
#include "virtual-camera/simulator/client.h"

#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>

#include "platform/daemons/daemon_client.h"
#include "platform/descriptor.h"

namespace camera::simulator {

int exchange(const char* path, std::string_view request, std::string* answer) {
  constexpr timeval kPatience{.tv_sec = 30, .tv_usec = 0};
  const Descriptor connection = connectToDaemon(path, std::chrono::seconds(kPatience.tv_sec));
  if (!connection.isOpen() ||
      setsockopt(connection.number(), SOL_SOCKET, SO_RCVTIMEO, &kPatience, sizeof kPatience) != 0 ||
      send(connection.number(), request.data(), request.size(), MSG_NOSIGNAL) < 0 ||
      shutdown(connection.number(), SHUT_WR) != 0) {
    return errno;
  }
  return readAll(connection.number(), answer);
}

int tell(const std::string& command, ControlReply* reply) {
  std::string answer;
  if (const int error = exchange(kControl, command, &answer); error != 0) return error;
  reply->isDone = answer.starts_with(kDone);
  reply->text = answer.substr(answer.empty() ? 0 : 1);
  return 0;
}

}  // namespace camera::simulator
