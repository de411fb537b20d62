// The command channel to the camera's daemons: one request, one answer.
#pragma once

#include "platform/daemons/domain_socket.h"

inline constexpr char kIoDaemon[] = "/var/tmp/watchdog";  // digital inputs and outputs
inline constexpr char kEventDaemon[] = "/var/tmp/eventd";
inline constexpr char kPanTiltDaemon[] = "/var/tmp/ptd";

class IpcClient : DomainSocket {
 public:
  using DomainSocket::DomainSocket;

  // Connects to the daemon at the path, writes the request, and reads until the reply is full or the daemon
  // closes. What the daemon did not fill is zero. All commands of a client together take no longer than its
  // time limit, so that a request that sends several is over as soon as one that sends one.
  // 0 when at least one byte was answered; -1 when the daemon could not be reached, answered nothing or
  // neither filled the reply nor closed in time (the log says which). No connection outlives the call.
  int send_cmd(const char* path, const void* request, std::size_t length, void* reply, std::size_t capacity);
};
static_assert(sizeof(IpcClient) == sizeof(DomainSocket));
