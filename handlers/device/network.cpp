// network.cgi: how the camera is reached over its wired network: addresses, PPPoE, dynamic DNS, ports, UPnP.
#include "handlers/device/network_clients.h"
#include "platform/store/records/ddns.h"
#include "platform/store/records/httpsvr.h"
#include "platform/store/records/lan.h"
#include "platform/store/records/pppoe.h"
#include "platform/store/records/rtspsvr.h"
#include "platform/store/records/upnp.h"

namespace camera {
namespace {

struct Network {
  _lan_setting lan;
  _pppoe_setting pppoe;
  _ddns_setting ddns;
  _httpsvr_setting httpsvr;
  _rtspsvr_setting rtspsvr;
  _upnp_setting upnp;
};

bool isAddress(std::string_view text) {
  return parseIpv4(text) && text != "255.255.255.255";
}

template <auto... kPath>
constexpr auto addressParam(const char* name, int minLength) {
  return textParam<kPath...>(name, minLength, 15, ".", kDigits)
      .also(isAddress, minLength == 0 ? "an IPv4 address, or empty" : "an IPv4 address");
}
template <auto... kPath>
constexpr auto maskParam(const char* name) {
  return textParam<kPath...>(name, 1, 15, ".", kDigits).also(isNetmask, "an IPv4 netmask");
}
template <auto... kPath>
constexpr auto portParam(const char* name) {
  return integerParam<kPath...>(name, 1, 65535);
}

constexpr auto kParams =
    paramRows<Network>(choiceParam<&Network::lan, &_lan_setting::dhcp>("dhcp", kOffOn),
                       addressParam<&Network::lan, &_lan_setting::ip>("ip", 1),
                       maskParam<&Network::lan, &_lan_setting::netmask>("netmask"),
                       addressParam<&Network::lan, &_lan_setting::gateway>("gateway", 1),
                       addressParam<&Network::lan, &_lan_setting::dns1>("dns1", 0),
                       addressParam<&Network::lan, &_lan_setting::dns2>("dns2", 0),
                       choiceParam<&Network::pppoe, &_pppoe_setting::enable>("pppoe", kOffOn),
                       pppoeUserParam<&Network::pppoe, &_pppoe_setting::user>("pppoeuser"),
                       pppoePassParam<&Network::pppoe, &_pppoe_setting::password>("pppoepass"),
                       choiceParam<&Network::ddns, &_ddns_setting::enable>("ddns", kOffOn),
                       choiceParam<&Network::ddns, &_ddns_setting::provider>("ddnsprovider", kDdnsProviders),
                       ddnsHostParam<&Network::ddns, &_ddns_setting::host>("ddnshost"),
                       ddnsAccountParam<&Network::ddns, &_ddns_setting::user>("ddnsuser"),
                       ddnsAccountParam<&Network::ddns, &_ddns_setting::password>("ddnspass"),
                       choiceParam<&Network::upnp, &_upnp_setting::enable>("upnp", kOffOn),
                       portParam<&Network::httpsvr, &_httpsvr_setting::http_port>("httpport"),
                       portParam<&Network::upnp, &_upnp_setting::http_external_port>("httpexternalport"),
                       portParam<&Network::rtspsvr, &_rtspsvr_setting::rtsp_port>("rtspport"),
                       portParam<&Network::upnp, &_upnp_setting::rtsp_external_port>("rtspexternalport"));

}  // namespace

class NetworkCgilet final : public StateEndpoint<Network> {
 public:
  NetworkCgilet() : StateEndpoint(kParams) {}

 private:
  int load() override {
    return read(state.lan, state.pppoe, state.ddns, state.httpsvr, state.rtspsvr, state.upnp);
  }

  int check(Network& wanted) override {
    int result = checkPorts("httpport", wanted.httpsvr.http_port, "rtspport", wanted.rtspsvr.rtsp_port);
    if (result == 200) {
      result = checkPorts("httpexternalport", wanted.upnp.http_external_port, "rtspexternalport",
                          wanted.upnp.rtsp_external_port);
    }
    if (result == 200) {
      result = canRun(*this, "pppoe", wanted.pppoe.enable != 0, {{"pppoeuser", wanted.pppoe.user}});
    }
    if (result == 200) {
      result = canRun(*this, "ddns", wanted.ddns.enable != 0,
                      {{"ddnsprovider", wanted.ddns.provider},
                       {"ddnshost", wanted.ddns.host},
                       {"ddnsuser", wanted.ddns.user},
                       {"ddnspass", wanted.ddns.password}});
    }
    return result;
  }

  // Only ports that the request names are refused: a clash that was stored does not block other changes.
  int checkPorts(const char* name, int port, const char* otherName, int otherPort) {
    if (port != otherPort || !(given(name) || given(otherName))) return 200;
    return given(name) ? refuse(name, std::string{"taken by "} + otherName)
                       : refuse(otherName, std::string{"taken by "} + name);
  }

  int carryOut(Network& wanted) override {
    begin();  // a transaction also where nothing changed
    writeChanged(state.lan, wanted.lan, 1);
    writeChanged(state.pppoe, wanted.pppoe, 1);
    writeChanged(state.ddns, wanted.ddns, 1);
    writeChanged(state.upnp, wanted.upnp, 1);
    writeChanged(state.httpsvr, wanted.httpsvr, 1);
    writeChanged(state.rtspsvr, wanted.rtspsvr, 1);
    return commit();
  }
};

template InfCgilet* create<NetworkCgilet>();

}  // namespace camera
