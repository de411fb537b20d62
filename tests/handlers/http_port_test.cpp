// httpport.cgi: which ports it takes, and how it reads them.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kHttpPort{.cgi = "httpport.cgi",
                         .state = "httpsvr.http_port=80 httpsvr.alt_port=8443 rtspsvr.rtsp_port=554",
                         .reply = "httpport=80",
                         .writes = "set httpsvr 1"};

TEST(HttpPort, TakesAPortThatNoServerUses) {
  kHttpPort.accepts({{"httpport=65535"}, {"httpport=80-", "", ""}, {"httpport=81-7", "", "httpport=81"}});
  kHttpPort.refuses(
      "httpport=0 httpport=65536 httpport= httpport=80a httpport=-80 httpport=--80 httpport=- httpport=+80 "
      "httpport=80%00 httpport=4294967376 httpport=554 httpport=8443 httpport=8080&!other=1 "
      "a=1&httpport=8080");
  kHttpPort.refuses("httpport=80", "httpsvr.alt_port=80");  // the stored values collide already
  kHttpPort.refuses("httpport=80", "rtspsvr.rtsp_port=80");
}

}  // namespace
}  // namespace camera::test
