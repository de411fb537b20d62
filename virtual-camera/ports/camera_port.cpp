// Gives the web server its listening socket: the camera has a network of its own, but clients connect to the
// host's.
//
//   camera-port serve
//       on the host, until it is killed: opens the sockets that the other form asks for
//   camera-port ADDRESS PORT COMMAND [WORD]...
//       in the camera: runs the command with a socket that listens there, as descriptor 3
//       (LISTEN_FDS). If there is none, prints why and exits 1.
//
// Both meet at the socket "ports" in the current folder, whose path may be too long for a socket's address.
#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/descriptor.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr int kFailed = 1;
constexpr int kHandedDescriptor = 3;  // the first that a program takes from its parent by LISTEN_FDS
constexpr sockaddr_un kMeetingPoint{.sun_family = AF_UNIX, .sun_path = "ports"};

const sockaddr* generic(const auto& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

int complain(const char* about, int error) {
  (void)std::fprintf(stderr, "camera-port: %s: %s\n", about, std::strerror(error));
  return kFailed;
}

// A message is an address to listen at or, back, an errno value; a control message carries the socket.
struct Message {
  template <class Content>
  explicit Message(Content* content) : part{.iov_base = content, .iov_len = sizeof *content} {
    header.msg_iov = &part;
    header.msg_iovlen = 1;
    header.msg_control = control.data();
    header.msg_controllen = control.size();
  }

  void attach(int descriptor) {
    cmsghdr* const first = CMSG_FIRSTHDR(&header);
    *first = {.cmsg_len = CMSG_LEN(sizeof descriptor), .cmsg_level = SOL_SOCKET, .cmsg_type = SCM_RIGHTS};
    std::memcpy(CMSG_DATA(first), &descriptor, sizeof descriptor);
  }
  Descriptor attached() {
    int descriptor = -1;
    const cmsghdr* const first = CMSG_FIRSTHDR(&header);
    if (first != nullptr && first->cmsg_type == SCM_RIGHTS) {
      std::memcpy(&descriptor, CMSG_DATA(first), sizeof descriptor);
    }
    return Descriptor(descriptor);
  }

  iovec part;
  msghdr header{};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
};

// Returns no descriptor, with errno set, on failure.
Descriptor listenAt(const sockaddr_in& address) {
  const int yes = 1;
  Descriptor listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const bool listens = listener.isOpen() &&
                       setsockopt(listener.number(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes) == 0 &&
                       bind(listener.number(), generic(address), sizeof address) == 0 &&
                       listen(listener.number(), SOMAXCONN) == 0;
  return listens ? std::move(listener) : Descriptor();
}

void serveOne(const Descriptor& client) {
  constexpr timeval kPatience{.tv_sec = 1, .tv_usec = 0};
  sockaddr_in address{};
  (void)setsockopt(client.number(), SOL_SOCKET, SO_RCVTIMEO, &kPatience, sizeof kPatience);
  if (recv(client.number(), &address, sizeof address, 0) != static_cast<ssize_t>(sizeof address)) return;
  const Descriptor listener = listenAt(address);
  int error = listener.isOpen() ? 0 : errno;
  Message message{&error};
  if (listener.isOpen()) {
    message.attach(listener.number());
  } else {
    message.header.msg_controllen = 0;
  }
  (void)sendmsg(client.number(), &message.header, MSG_NOSIGNAL);
}

int serve() {
  const Descriptor server(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
  if (!server.isOpen() || bind(server.number(), generic(kMeetingPoint), sizeof kMeetingPoint) != 0 ||
      listen(server.number(), SOMAXCONN) != 0) {
    return complain("ports", errno);
  }
  for (;;) serveOne(Descriptor(accept4(server.number(), nullptr, nullptr, SOCK_CLOEXEC)));
}

// Returns 0 or an errno value.
int ask(sockaddr_in address, Descriptor* listener) {
  const Descriptor server(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
  int error = 0;
  Message message{&error};
  if (!server.isOpen() || connect(server.number(), generic(kMeetingPoint), sizeof kMeetingPoint) != 0 ||
      send(server.number(), &address, sizeof address, MSG_NOSIGNAL) < 0 ||
      recvmsg(server.number(), &message.header, 0) != static_cast<ssize_t>(sizeof error)) {
    return errno;
  }
  *listener = message.attached();
  return error;
}

int runWith(const char* address, const char* port, char** command) {
  sockaddr_in wanted{};
  std::uint16_t number = 0;
  wanted.sin_family = AF_INET;
  if (inet_pton(AF_INET, address, &wanted.sin_addr) != 1 || !readNumber(port, &number)) {
    return complain("ADDRESS PORT", EINVAL);
  }
  wanted.sin_port = htons(number);
  Descriptor listener;
  if (const int error = ask(wanted, &listener); error != 0) return complain(port, error);
  if (listener.number() != kHandedDescriptor) {
    dup2(listener.number(), kHandedDescriptor);
    listener.close();
  }
  setenv("LISTEN_PID", std::to_string(getpid()).c_str(), 1);
  setenv("LISTEN_FDS", "1", 1);
  execv(command[0], command);
  return complain(command[0], errno);
}

}  // namespace
}  // namespace camera

int main(int count, char** arguments) {
  if (count == 2 && std::strcmp(arguments[1], "serve") == 0) return camera::serve();
  if (count > 3) return camera::runWith(arguments[1], arguments[2], arguments + 3);
  return camera::complain("usage: serve, or ADDRESS PORT COMMAND", EINVAL);
}
