// The command channel to the camera's daemons: one request, one answer.
#include "platform/daemons/ipc_client.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <chrono>
#include <cstring>

#include "platform/log.h"

namespace {

using Clock = std::chrono::steady_clock;

// False, with errno set, when nothing can be read before the deadline.
bool readable(int descriptor, Clock::time_point deadline) {
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd entry{.fd = descriptor, .events = POLLIN, .revents = 0};
    const int ready = left > 0 ? poll(&entry, 1, static_cast<int>(left)) : 0;
    if (ready == 0) errno = ETIMEDOUT;
    if (ready >= 0 || errno != EINTR) return ready > 0;
  }
}

// True when the reply is full, or the daemon closed after at least one byte; otherwise errno says why.
bool receive(int descriptor, Clock::time_point deadline, char* reply, std::size_t capacity) {
  std::size_t length = 0;
  while (length < capacity) {
    if (!readable(descriptor, deadline)) return false;
    const ssize_t count = recv(descriptor, reply + length, capacity - length, 0);
    if (count > 0) {
      length += static_cast<std::size_t>(count);
      continue;
    }
    // A daemon that closes without having read its whole request resets the connection.
    const bool closed = count == 0 || errno == ECONNRESET;
    if (count == 0) errno = ENODATA;
    return closed && length > 0;
  }
  return true;
}

}  // namespace

int IpcClient::send_cmd(const char* path, const void* request, std::size_t length, void* reply,
                        std::size_t capacity) {
  const auto begin = Clock::now();
  const auto deadline = begin + std::chrono::seconds(limit_);
  std::memset(reply, 0, capacity);
  const bool answered = open(path) == 0 &&
                        send(descriptor_, request, length, MSG_NOSIGNAL) == static_cast<ssize_t>(length) &&
                        receive(descriptor_, deadline, static_cast<char*>(reply), capacity);
  if (!answered) logDebug("daemon %s: %s", path, std::strerror(errno));
  close();
  limit_ -= static_cast<std::int32_t>(std::chrono::floor<std::chrono::seconds>(Clock::now() - begin).count());
  return answered ? 0 : -1;
}
