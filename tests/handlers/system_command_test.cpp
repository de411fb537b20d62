// system_reboot.cgi and system_reset.cgi: only the one confirmed request starts the command.
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kReboot[] = "system ( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &";
constexpr char kReset[] = "system ( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &";

TEST(SystemCommand, StartsOnGoAlone) {
  expectRows("system_reboot.cgi", "", {{"reboot=go", "", 200, "reboot=yes ", kReboot}});
  expectRows("system_reset.cgi", "", {{"reset=go", "", 200, "reset=yes ", kReset}});
  expectRefused(
      "system_reboot.cgi", "",
      {"", "reboot=", "reboot=Go", "reboot=go%00", "reboot%00=go", "reset=go", "reboot=go&reset=go"});
}

TEST(SystemCommand, AnswersWhateverBecameOfTheCommand) {
  expectResults("system_reboot.cgi", "", {{kReboot, -1, "reboot=go", 200, kReboot}});
}

}  // namespace
}  // namespace camera::test
