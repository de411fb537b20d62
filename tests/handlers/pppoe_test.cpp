// pppoe.cgi: its values, and that the client is never on without a user.
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kOff[] = "pppoe.enable=0 pppoe.user=me pppoe.password=secret";
constexpr char kWritten[] = "clean set pppoe 1 work pppoe";

TEST(PPPoE, IsNeverOnWithoutAUser) {
  const std::string longUser(32, 'u');
  const std::string longPass(60, '~');
  const std::string longest = "user=" + longUser + "&pass=" + longPass;
  const std::string longestReply = "pppoe=off user=" + longUser + " pass=" + longPass + " ";
  const std::string tooLong = "user=u" + longUser;
  const std::string tooLongPass = "pass=~" + longPass;
  expectRows("pppoe.cgi", kOff,
             {
                 {"", "", 200, "pppoe=off user=me pass=secret ", ""},
                 {"pppoe=on", "", 200, "pppoe=on user=me pass=secret ", kWritten},
                 {"pppoe=off&user=me", "", 200, "pppoe=off user=me pass=secret ", ""},
                 {"pppoe=on", "pppoe.user=", 400, "", ""},
                 {"pppoe=on&user=you", "pppoe.user=", 200, "pppoe=on user=you pass=secret ", kWritten},
                 {"pppoe=on&user=", "", 400, "", ""},
                 {"user=", "", 200, "pppoe=off user= pass=secret ", kWritten},
                 {"user=", "pppoe.enable=1", 400, "", ""},
                 {"user=&pppoe=off", "pppoe.enable=1", 200, "pppoe=off user= pass=secret ", kWritten},
                 {"pass=", "pppoe.enable=1", 200, "pppoe=on user=me pass= ", kWritten},
                 {longest.c_str(), "", 200, longestReply.c_str(), kWritten},
                 {tooLong.c_str(), "", 400, "", ""},
                 {tooLongPass.c_str(), "", 400, "", ""},
                 {"user=a+b", "", 400, "", ""},
                 {"pppoe=On", "", 400, "", ""},
                 {"pppoe=", "", 400, "", ""},
                 {"pppoeuser=me", "", 400, "", ""},
             });
}

}  // namespace
}  // namespace camera::test
