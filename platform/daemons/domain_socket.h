// A connection to one of the camera's daemons over a local socket.
#pragma once

#include <cstddef>
#include <cstdint>

class DomainSocket {
 public:
  explicit DomainSocket(std::int32_t seconds = 30) : limit_(seconds) {}
  virtual ~DomainSocket() { close(); }
  DomainSocket(const DomainSocket&) = delete;
  DomainSocket& operator=(const DomainSocket&) = delete;

  // Connects to the daemon that listens at the path (at most 107 bytes), within the time limit; an earlier
  // connection is closed. 0, or -1 when nobody listens there.
  virtual int open(const char* path);
  void close();

 protected:
  std::int32_t descriptor_ = -1;  // -1 while closed
  std::int32_t limit_;            // seconds that are left; without any nobody is reached
};
static_assert(sizeof(DomainSocket) == sizeof(void*) + 8);
