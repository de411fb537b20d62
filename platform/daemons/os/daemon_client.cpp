// The command channel to the camera's daemons.
#include "platform/daemons/daemon_client.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

#include <cerrno>
#include <cstring>

#include "platform/log.h"
#include "platform/text.h"

namespace camera {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

milliseconds timeUntil(Clock::time_point end) {
  return std::chrono::ceil<milliseconds>(end - Clock::now());
}

bool sendAll(int descriptor, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t count = send(descriptor, data, size, MSG_NOSIGNAL);
    if (count < 0 && errno != EINTR) return false;
    if (count < 0) continue;
    data += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

// False, with errno set, if nothing can be read before the end.
bool waitForData(int descriptor, Clock::time_point end) {
  for (;;) {
    const auto left = timeUntil(end).count();
    pollfd entry{.fd = descriptor, .events = POLLIN, .revents = 0};
    const int ready = left > 0 ? poll(&entry, 1, static_cast<int>(left)) : 0;
    if (ready == 0) errno = ETIMEDOUT;
    if (ready >= 0 || errno != EINTR) return ready > 0;
  }
}

// True if the reply is full, or if the daemon closed after at least one byte. False with errno set.
bool receive(int descriptor, Clock::time_point end, char* reply, std::size_t capacity) {
  std::size_t length = 0;
  while (length < capacity) {
    if (!waitForData(descriptor, end)) return false;
    const ssize_t count = recv(descriptor, reply + length, capacity - length, 0);
    if (count > 0) {
      length += static_cast<std::size_t>(count);
      continue;
    }
    // A daemon that closes before it has read the whole request resets the connection.
    const bool isClosed = count == 0 || errno == ECONNRESET;
    if (count == 0) errno = ENODATA;
    return isClosed && length > 0;
  }
  return true;
}

}  // namespace

Descriptor connectToDaemon(const char* path, milliseconds limit) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::size_t length = std::strlen(path);
  if (length >= sizeof address.sun_path || limit.count() <= 0) {
    errno = limit.count() <= 0 ? ETIMEDOUT : ENAMETOOLONG;
    return Descriptor();
  }
  std::memcpy(address.sun_path, path, length);
  Descriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  // connect obeys this limit too, if the daemon does not accept.
  const timeval wait{.tv_sec = limit.count() / 1000, .tv_usec = limit.count() % 1000 * 1000};
  if (connection.isOpen() &&
      setsockopt(connection.number(), SOL_SOCKET, SO_SNDTIMEO, &wait, sizeof wait) == 0 &&
      connect(connection.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    return connection;
  }
  if (errno == EAGAIN) errno = ETIMEDOUT;
  return Descriptor();
}

bool DaemonClient::ask(const char* path, const void* request, std::size_t length, void* reply,
                       std::size_t capacity) {
  std::memset(reply, 0, capacity);
  if (end_ == Clock::time_point{}) end_ = Clock::now() + limit_;
  const Descriptor connection = connectToDaemon(path, timeUntil(end_));
  const bool isAnswered = connection.isOpen() &&
                          sendAll(connection.number(), static_cast<const char*>(request), length) &&
                          receive(connection.number(), end_, static_cast<char*>(reply), capacity);
  if (!isAnswered) logDebug(joined({"daemon ", path, ": ", errorText(errno)}));
  return isAnswered;
}

DaemonClient& daemonClient() {
  static DaemonClient client;
  return client;
}

}  // namespace camera
