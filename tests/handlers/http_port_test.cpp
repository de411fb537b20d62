// httpport.cgi: which ports it takes, and what the store's answers make of a request.
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kPorts[] = "httpsvr.http_port=80 httpsvr.alt_port=8443 rtspsvr.rtsp_port=554";

TEST(HttpPort, TakesAPortThatNoServerUses) {
  expectRows("httpport.cgi", kPorts,
             {
                 {"", "", 200, "httpport=80 ", ""},
                 {"httpport=65535", "", 200, "httpport=65535 ", "clean set httpsvr 1 work httpsvr"},
                 {"httpport=80-", "", 200, "httpport=80 ", ""},
                 {"httpport=81-7", "", 200, "httpport=81 ", "clean set httpsvr 1 work httpsvr"},
                 {"httpport=80", "httpsvr.alt_port=80", 400, "", ""},  // the stored values collide already
                 {"httpport=80", "rtspsvr.rtsp_port=80", 400, "", ""},
             });
  expectRefused("httpport.cgi", kPorts,
                {"httpport=0", "httpport=65536", "httpport=", "httpport=80a", "httpport=-80", "httpport=--80",
                 "httpport=-", "httpport=+80", "httpport=80%00", "httpport=4294967376", "httpport=554",
                 "httpport=8443", "httpport=8080&other=1", "a=1&httpport=8080"});
}

TEST(HttpPort, AnswersAsTheStoreDoes) {
  expectResults("httpport.cgi", kPorts,
                {
                    {"get httpsvr", 1, "httpport=8080", 500, "get httpsvr"},
                    {"get rtspsvr", 2, "httpport=8080", 500, "get httpsvr get rtspsvr"},
                    {"set httpsvr 1", 1, "httpport=8080", 400, "get httpsvr get rtspsvr clean set httpsvr 1"},
                    {"set httpsvr 1", 2, "httpport=8080", 500, "get httpsvr get rtspsvr clean set httpsvr 1"},
                    {"work httpsvr", 9, "httpport=8080", 200,
                     "get httpsvr get rtspsvr clean set httpsvr 1 work httpsvr"},
                });
}

TEST(HttpPort, PassesUnusedBytesThrough) {
  scripted().reset();
  scripted().store("httpsvr.reserved1=a5");
  request("httpport.cgi", "httpport=8080");
  EXPECT_EQ(scripted().stored("httpsvr.reserved1") + scripted().stored("httpsvr.http_port"), "a58080");
}

}  // namespace
}  // namespace camera::test
