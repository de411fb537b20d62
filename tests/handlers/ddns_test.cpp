// ddns.cgi: its values, and that the client is never switched on, or left on, without all of its texts.
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kOff[] = "ddns.enable=0 ddns.provider=dyndns ddns.host=h ddns.user=u ddns.password=p";
constexpr char kSame[] = "ddns=off provider=dyndns host=h user=u pass=p ";
constexpr char kOn[] = "ddns=on provider=dyndns host=h user=u pass=p ";
constexpr char kWritten[] = "clean set ddns 1 work ddns";

TEST(Ddns, IsNeverOnWithoutAllItsTexts) {
  expectRows("ddns.cgi", kOff,
             {{"", "", 200, kSame, ""},
              {"ddns=off&host=h", "", 200, kSame, ""},
              {"ddns=on", "", 200, kOn, kWritten},
              {"ddns=on&host=h&user=u&pass=p", "ddns.host= ddns.user= ddns.password=", 200, kOn, kWritten},
              {"user=u", "ddns.enable=1 ddns.host=", 200, "ddns=on provider=dyndns host= user=u pass=p ", ""},
              {"host=&user=&pass=&ddns=off", "ddns.enable=1", 200,
               "ddns=off provider=dyndns host= user= pass= ", kWritten},
              {"host=A9_-.z&user=%22&pass=~&provider=velkorddns", "", 200,
               "ddns=off provider=velkorddns host=A9_-.z user=\" pass=~ ", kWritten}});
  for (const char* missing : {"ddns.provider=", "ddns.host=", "ddns.user=", "ddns.password="})
    expectRows("ddns.cgi", kOff, {{"ddns=on", missing, 400, "", ""}});
  for (const char* query :
       {"host=", "user=", "pass=", "host=a/b", "user=a+b", "provider=other", "ddnshost=h"})
    expectRows("ddns.cgi", kOff, {{query, "ddns.enable=1", 400, "", ""}});
}

TEST(Ddns, AnswersAsTheStoreDoes) {
  expectResults("ddns.cgi", kOff,
                {{"get ddns", 2, "ddns=on", 500, "get ddns"},
                 {"set ddns 1", 1, "ddns=on", 400, "get ddns clean set ddns 1"}});
}

}  // namespace
}  // namespace camera::test
