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
  expectRows(
      "ddns.cgi", kOff,
      {
          {"", "", 200, kSame, ""},
          {"ddns=off&host=h", "", 200, kSame, ""},
          {"ddns=on", "", 200, kOn, kWritten},
          {"ddns=on&provider=dyndns&host=h&user=u&pass=p", "ddns.host= ddns.user= ddns.password=", 200, kOn,
           kWritten},
          {"ddns=on", "ddns.provider=", 400, "", ""},
          {"ddns=on", "ddns.host=", 400, "", ""},
          {"ddns=on", "ddns.user=", 400, "", ""},
          {"ddns=on", "ddns.password=", 400, "", ""},
          {"user=u", "ddns.enable=1 ddns.host=", 200, "ddns=on provider=dyndns host= user=u pass=p ", ""},
          {"host=", "ddns.enable=1", 400, "", ""},
          {"user=", "ddns.enable=1", 400, "", ""},
          {"pass=", "ddns.enable=1", 400, "", ""},
          {"host=&user=&pass=&ddns=off", "ddns.enable=1", 200,
           "ddns=off provider=dyndns host= user= pass= ", kWritten},
          {"host=A9_-.z&user=%22&pass=~", "", 200, "ddns=off provider=dyndns host=A9_-.z user=\" pass=~ ",
           kWritten},
          {"host=hhhhhhhhhhhhhhhhhhhhhhhhhhhhhhhhhhhhh", "", 400, "", ""},  // 37
          {"user=uuuuuuuuuuuuuuuuuuuuuuuuuuuuuuu", "", 400, "", ""},        // 31
          {"pass=ppppppppppppppppppppppppppppppp", "", 400, "", ""},
          {"host=a/b", "", 400, "", ""},
          {"user=a+b", "", 400, "", ""},
          {"provider=other", "", 400, "", ""},
          {"provider=", "", 400, "", ""},
          {"ddnshost=h", "", 400, "", ""},
      });
}

TEST(Ddns, AnswersAsTheStoreDoes) {
  expectResults("ddns.cgi", kOff,
                {
                    {"get ddns", 2, "ddns=on", 500, "get ddns"},
                    {"set ddns 1", 1, "ddns=on", 400, "get ddns clean set ddns 1"},
                    {"set ddns 1", 2, "ddns=on", 500, "get ddns clean set ddns 1"},
                });
}

}  // namespace
}  // namespace camera::test
