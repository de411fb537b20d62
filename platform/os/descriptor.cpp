// Reads and writes descriptors; goes on after interruptions and short counts.
#include "platform/descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace camera {

int readOnce(int descriptor, void* buffer, std::size_t size, std::size_t* length) {
  ssize_t count = 0;
  do {
    count = read(descriptor, buffer, size);
  } while (count < 0 && errno == EINTR);
  if (count < 0) return errno;
  *length = static_cast<std::size_t>(count);
  return 0;
}

int readAll(int descriptor, std::string* text) {
  std::array<char, 4096> block;
  std::size_t length = 0;
  do {
    if (const int error = readOnce(descriptor, block.data(), block.size(), &length); error != 0) return error;
    text->append(block.data(), length);
  } while (length > 0);
  return 0;
}

int writeAll(int descriptor, const void* data, std::size_t size) {
  const auto* rest = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t count = write(descriptor, rest, size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    rest += count;
    size -= static_cast<std::size_t>(count);
  }
  return 0;
}

bool waitUntilReady(int descriptor, short events, std::chrono::milliseconds patience) {
  pollfd entry{descriptor, events, 0};
  return poll(&entry, 1, static_cast<int>(patience.count())) != 0;
}

bool writeInTime(int descriptor, std::string_view text, std::chrono::milliseconds patience) {
  while (!text.empty()) {
    const ssize_t size = write(descriptor, text.data(), text.size());
    if (size > 0) {
      text.remove_prefix(static_cast<std::size_t>(size));
    } else if (errno == EAGAIN) {
      if (!waitUntilReady(descriptor, POLLOUT, patience)) return false;
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace camera
