// system_reboot.cgi and system_reset.cgi: only the one confirmed request starts the command.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

TEST(SystemCommand, StartsOnGoAlone) {
  const Endpoint reboot{.cgi = "system_reboot.cgi",
                        .writes = "run ( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &"};
  const Endpoint reset{.cgi = "system_reset.cgi",
                       .writes = "run ( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &"};
  reboot.accepts({{"reboot=go", "", "reboot=yes"}});
  reset.accepts({{"reset=go", "", "reset=yes"}});
  reboot.refuses("!reboot reboot= reboot=Go reboot=go%00 reboot%00=go reset=go reboot=go&!reset=go");
}

}  // namespace
}  // namespace camera::test
