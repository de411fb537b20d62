// The other side of the simulator's sockets.
#include "virtual-camera/simulator/client.h"

#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>

#include "platform/daemons/domain_socket.h"
#include "platform/descriptor.h"

namespace camera::simulator {
namespace {

class Client : DomainSocket {
 public:
  int exchange(const char* path, std::string_view request, std::string* answer) {
    const timeval limit{.tv_sec = limit_, .tv_usec = 0};
    if (open(path) != 0 || setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit) != 0 ||
        send(descriptor_, request.data(), request.size(), MSG_NOSIGNAL) < 0 ||
        shutdown(descriptor_, SHUT_WR) != 0) {
      return errno;
    }
    return readAll(descriptor_, answer);
  }
};

}  // namespace

int exchange(const char* path, std::string_view request, std::string* answer) {
  return Client{}.exchange(path, request, answer);
}

}  // namespace camera::simulator
