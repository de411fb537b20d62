// Commands to the digital I/O daemon and the event daemon.
#include "handlers/events/daemon_command.h"

#include "platform/little_endian.h"

namespace camera {
namespace {

constexpr std::size_t kRequestSize = 12;  // the code, a word that is 0, the argument
constexpr std::size_t kReplySize = 140;

}  // namespace

bool askDaemon(DaemonClient& client, const char* daemon, std::int32_t code, std::int32_t argument,
               DaemonAnswer* answer) {
  char request[kRequestSize] = {};
  char reply[kReplySize];
  storeLittle(request, code);
  storeLittle(request + 8, argument);
  if (!client.ask(daemon, request, sizeof request, reply, sizeof reply)) return false;
  answer->result = loadLittle<std::int32_t>(reply);
  answer->state = loadLittle<std::int32_t>(reply + 4);
  return true;
}

}  // namespace camera
