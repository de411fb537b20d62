// network.cgi: how the camera is reached over its wired network: addresses, PPPoE, dynamic DNS, ports, UPnP.
#include "handlers/device/network_clients.h"
#include "handlers/transaction.h"
#include "platform/store/records/ddns.h"
#include "platform/store/records/httpsvr.h"
#include "platform/store/records/lan.h"
#include "platform/store/records/pppoe.h"
#include "platform/store/records/rtspsvr.h"
#include "platform/store/records/upnp.h"

namespace {

camera::ParamRow switchParam(const char* name) {
  return camera::choiceParam(name, camera::kOffOn);
}
camera::ParamRow maskParam(const char* name) {
  return camera::digitsParam(name, 1, 15, ".").also(CommonAPI::ChkMask);
}
camera::ParamRow addressParam(const char* name, int minLength) {
  return camera::digitsParam(name, minLength, 15, ".").also([](std::string_view text) {
    return CommonAPI::ChkIp(text);
  });
}
camera::ParamRow portParam(const char* name) {
  return camera::integerParam(name, 1, 65535);
}

}  // namespace

class NetworkCgilet final : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    if (cam_get_lan(&lan_) != 0 || cam_get_pppoe(&pppoe_) != 0 || cam_get_ddns(&ddns_) != 0 ||
        cam_get_httpsvr(&httpsvr_) != 0 || cam_get_rtspsvr(&rtspsvr_) != 0 || cam_get_upnp(&upnp_) != 0) {
      return;
    }
    status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    if (!params_.check(*this)) return;
    params_.merge();
    if (portsClash() || !clientsCanRun()) return;
    status = write();
  }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    params_.reply(*this);
    infOK();
  }

 private:
  // Only ports that the request names are refused: a clash that was stored does not block other changes.
  bool portsClash() const {
    const bool camera = params_.given("httpport") || params_.given("rtspport");
    const bool router = params_.given("httpexternalport") || params_.given("rtspexternalport");
    return (camera && httpsvr_.http_port == rtspsvr_.rtsp_port) ||
           (router && upnp_.http_external_port == upnp_.rtsp_external_port);
  }

  bool clientsCanRun() const {
    return camera::canRun(params_, "pppoe", pppoe_.enable, {{"pppoeuser", pppoe_.user}}) &&
           camera::canRun(params_, "ddns", ddns_.enable,
                          {{"ddnsprovider", ddns_.provider},
                           {"ddnshost", ddns_.host},
                           {"ddnsuser", ddns_.user},
                           {"ddnspass", ddns_.password}});
  }

  int write() const {
    camera::Transaction transaction;
    if (lanChanged_) transaction.write(cam_set_lan, lan_, 1);
    if (pppoeChanged_) transaction.write(cam_set_pppoe, pppoe_, 1);
    if (ddnsChanged_) transaction.write(cam_set_ddns, ddns_, 1);
    if (upnpChanged_) transaction.write(cam_set_upnp, upnp_, 1);
    if (httpsvrChanged_) transaction.write(cam_set_httpsvr, httpsvr_, 1);
    if (rtspsvrChanged_) transaction.write(cam_set_rtspsvr, rtspsvr_, 1);
    return transaction.finish();
  }

  _lan_setting lan_;
  _ddns_setting ddns_;
  _pppoe_setting pppoe_;
  _httpsvr_setting httpsvr_;
  _rtspsvr_setting rtspsvr_;
  _upnp_setting upnp_;
  bool lanChanged_ = false;
  bool ddnsChanged_ = false;
  bool pppoeChanged_ = false;
  bool httpsvrChanged_ = false;
  bool rtspsvrChanged_ = false;
  bool upnpChanged_ = false;
  camera::ParamTable params_{{
      switchParam("dhcp").into(lan_.dhcp, lanChanged_),
      addressParam("ip", 1).into(lan_.ip, lanChanged_),
      maskParam("netmask").into(lan_.netmask, lanChanged_),
      addressParam("gateway", 1).into(lan_.gateway, lanChanged_),
      addressParam("dns1", 0).into(lan_.dns1, lanChanged_),
      addressParam("dns2", 0).into(lan_.dns2, lanChanged_),
      switchParam("pppoe").into(pppoe_.enable, pppoeChanged_),
      camera::pppoeUserParam("pppoeuser").into(pppoe_.user, pppoeChanged_),
      camera::pppoePassParam("pppoepass").into(pppoe_.password, pppoeChanged_),
      switchParam("ddns").into(ddns_.enable, ddnsChanged_),
      camera::choiceParam("ddnsprovider", camera::kDdnsProviders).into(ddns_.provider, ddnsChanged_),
      camera::ddnsHostParam("ddnshost").into(ddns_.host, ddnsChanged_),
      camera::ddnsAccountParam("ddnsuser").into(ddns_.user, ddnsChanged_),
      camera::ddnsAccountParam("ddnspass").into(ddns_.password, ddnsChanged_),
      switchParam("upnp").into(upnp_.enable, upnpChanged_),
      portParam("httpport").into(httpsvr_.http_port, httpsvrChanged_),
      portParam("httpexternalport").into(upnp_.http_external_port, upnpChanged_),
      portParam("rtspport").into(rtspsvr_.rtsp_port, rtspsvrChanged_),
      portParam("rtspexternalport").into(upnp_.rtsp_external_port, upnpChanged_),
  }};
};

template InfCgilet* camera::create<NetworkCgilet>();
