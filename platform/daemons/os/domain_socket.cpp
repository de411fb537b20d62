// A connection to one of the camera's daemons over a local socket.
#include "platform/daemons/domain_socket.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

int DomainSocket::open(const char* path) {
  close();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::size_t length = std::strlen(path);
  if (length >= sizeof address.sun_path || limit_ <= 0) {
    errno = limit_ <= 0 ? ETIMEDOUT : ENAMETOOLONG;
    return -1;
  }
  std::memcpy(address.sun_path, path, length);
  descriptor_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  // A daemon that accepts nobody any more makes a connection wait as long as a write.
  const timeval limit{.tv_sec = limit_, .tv_usec = 0};
  if (descriptor_ >= 0 && setsockopt(descriptor_, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit) == 0 &&
      connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    return 0;
  }
  const int reason = errno;
  close();
  errno = reason;
  return -1;
}

void DomainSocket::close() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}
