// The camera's debug log: one datagram per text. syslog(3) would also read a time zone file.
#include "platform/log.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <string_view>

#include "platform/descriptor.h"

namespace camera {
namespace {

constexpr std::string_view kHead = "<15>camera: ";  // facility user, severity debug

void send(const std::string& line) {
  const Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  constexpr sockaddr_un kSystemLog{.sun_family = AF_UNIX, .sun_path = "/dev/log"};
  sendto(socket.number(), line.data(), line.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
         reinterpret_cast<const sockaddr*>(&kSystemLog), sizeof kSystemLog);
}

}  // namespace

// NOLINTNEXTLINE(cert-dcl50-cpp): gnu::format checks the callers.
std::string logDebug(const char* format, ...) {
  std::array<char, 1024> text{};
  va_list arguments;
  va_start(arguments, format);
  if (vsnprintf(text.data(), text.size(), format, arguments) < 0) text[0] = '\0';
  va_end(arguments);
  std::string line(kHead);
  line += text.data();
  send(line);
  return line.substr(kHead.size());
}

}  // namespace camera
