// pppoe.cgi: its values, and that the client is never on without a user.
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kOff[] = "pppoe.enable=0 pppoe.user=me pppoe.password=secret";
constexpr char kWritten[] = "clean set pppoe 1 work pppoe";

TEST(PPPoE, IsNeverOnWithoutAUser) {
  const std::string user(32, 'u');
  const std::string pass(60, '~');
  const std::string longest = "pppoe=off user=" + user + " pass=" + pass + " ";
  expectRows("pppoe.cgi", kOff,
             {
                 {"", "", 200, "pppoe=off user=me pass=secret ", ""},
                 {"pppoe=on", "", 200, "pppoe=on user=me pass=secret ", kWritten},
                 {"pppoe=off&user=me", "", 200, "pppoe=off user=me pass=secret ", ""},
                 {"pppoe=on", "pppoe.user=", 400, "", ""},
                 {"pppoe=on&user=you", "pppoe.user=", 200, "pppoe=on user=you pass=secret ", kWritten},
                 {"user=", "", 200, "pppoe=off user= pass=secret ", kWritten},
                 {"user=", "pppoe.enable=1", 400, "", ""},
                 {"user=&pppoe=off", "pppoe.enable=1", 200, "pppoe=off user= pass=secret ", kWritten},
                 {"pass=", "pppoe.enable=1", 200, "pppoe=on user=me pass= ", kWritten},
                 {"user=" + user + "&pass=" + pass, "", 200, longest, kWritten},
             });
  expectRefused("pppoe.cgi", kOff, {"user=u" + user, "pass=~" + pass, "user=a+b", "pppoe=On"});
}

TEST(PPPoE, AnswersAsTheStoreDoes) {
  expectResults("pppoe.cgi", "",
                {{"get pppoe", 2, "", 500, "get pppoe"},
                 {"set pppoe 1", 1, "user=you", 400, "get pppoe clean set pppoe 1"}});
}

}  // namespace
}  // namespace camera::test
