// httpport.cgi: the TCP port of the camera's HTTP server.
#include "framework/cgilet.h"
#include "handlers/transaction.h"
#include "platform/store/records/httpsvr.h"
#include "platform/store/records/rtspsvr.h"

namespace {

constexpr int kMaxPort = 65535;

// This one endpoint reads a port as atoi does: leading digits count, what follows them is dropped ("80-1" is
// 80).
bool parsePort(const std::string& text, std::int32_t* port) {
  if (text.empty() || !camera::consistsOf(text, camera::kDigits, "-")) return false;
  const std::size_t end = text.find('-', 1);
  int number = 0;
  if (!camera::parseInteger(text.substr(0, end), 1, kMaxPort, &number)) return false;
  *port = number;
  return true;
}

}  // namespace

class HttpPortCgilet final : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    if (cam_get_httpsvr(&httpsvr_) == 0) status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    _httpsvr_setting wanted = httpsvr_;
    for (const auto& [name, value] : queries) {
      if (name != "httpport" || !parsePort(value, &wanted.http_port)) return;
    }
    _rtspsvr_setting rtspsvr;
    if (cam_get_rtspsvr(&rtspsvr) != 0) {
      status = 500;
      return;
    }
    if (wanted.http_port == wanted.alt_port || wanted.http_port == rtspsvr.rtsp_port) return;
    status = camera::setIfDifferent(&httpsvr_.http_port, wanted.http_port)
                 ? camera::store(cam_set_httpsvr, httpsvr_, 1)
                 : 200;
  }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    pair("httpport", httpsvr_.http_port);
    infOK();
  }

 private:
  _httpsvr_setting httpsvr_;
};

template InfCgilet* camera::create<HttpPortCgilet>();
