// httpport.cgi: the TCP port of the camera's HTTP server.
#include "handlers/endpoint.h"
#include "platform/store/records/httpsvr.h"
#include "platform/store/records/rtspsvr.h"

namespace camera {
namespace {

// Unlike other endpoints, this one reads a port as atoi does: "80-1" is 80.
bool takePort(std::string_view value, HttpServerSettings& wanted) {
  wanted.http_port = leadingInteger(value);
  return consistsOf(value, kDigits, "-") && wanted.http_port >= 1 && wanted.http_port <= 65535;
}

constexpr auto kParams =
    paramRows<HttpServerSettings>(ownParam<takePort, HttpServerSettings>("httpport", "1 to 65535"));

}  // namespace

class HttpPortEndpoint final : public RecordEndpoint<kParams> {
  int check(HttpServerSettings& wanted) override {
    RtspServerSettings rtspsvr;
    if (const int result = read(rtspsvr); result != 200) return result;
    if (wanted.http_port == wanted.alt_port) return refuse("httpport", "taken by the server's second port");
    if (wanted.http_port == rtspsvr.rtsp_port) return refuse("httpport", "taken by the RTSP server");
    return 200;
  }

  int reply() override {
    pair("httpport", state.http_port);
    if (queries().empty()) warnOfPort({state.http_port, state.alt_port});
    return 200;
  }
};

template <>
const Api kApi<HttpPortEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kNetwork,
     .summary = "The TCP port of the camera's web server.",
     .records = "`httpsvr`; reads `rtspsvr`",
     .dependent = "httpport",
     .lenient = "httpport",
     .params = {{"httpport", "Moves the server within two seconds; the reply still comes over the old port.",
                 nullptr, "8081",
                 "1 to 65535, but not the RTSP server's port or the web server's second port (443 on a new "
                 "camera; no endpoint changes it)"}},
     .reply = {{"httpport"}},
     .schema = [](std::string_view, const ProductInfo&) -> std::string {
       const Decimal factory(HttpServerSettings{}.http_port);
       return joined({R"("type":"integer","minimum":1,"maximum":65535,"x-factory":)", factory.text()});
     }});
template struct EndpointOf<HttpPortEndpoint>;

}  // namespace camera
