// network.cgi: the wired network: addresses, PPPoE, dynamic DNS, ports and UPnP.
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
  LanSettings lan;
  PppoeSettings pppoe;
  DdnsSettings ddns;
  HttpServerSettings httpsvr;
  RtspServerSettings rtspsvr;
  UpnpSettings upnp;
};

bool isAddress(std::string_view text) {
  return parseIpv4(text) && text != "255.255.255.255";
}

template <auto... kPath>
constexpr auto addressParam(const char* name, const char* accepted = "an IPv4 address") {
  return textParam<kPath...>(name, ".", kDigits).also(isAddress, accepted);
}

constexpr char kAddressOrNone[] = "an IPv4 address, or empty";

constexpr auto kParams =
    paramRows<Network>(choiceParam<&Network::lan, &LanSettings::dhcp>("dhcp", kOffOn),
                       addressParam<&Network::lan, &LanSettings::ip>("ip"),
                       textParam<&Network::lan, &LanSettings::netmask>("netmask", ".", kDigits)
                           .also(isNetmask, "an IPv4 netmask"),
                       addressParam<&Network::lan, &LanSettings::gateway>("gateway"),
                       addressParam<&Network::lan, &LanSettings::dns1>("dns1", kAddressOrNone),
                       addressParam<&Network::lan, &LanSettings::dns2>("dns2", kAddressOrNone),
                       choiceParam<&Network::pppoe, &PppoeSettings::enable>("pppoe", kOffOn),
                       textParam<&Network::pppoe, &PppoeSettings::user>("pppoeuser", kPunctuationText),
                       textParam<&Network::pppoe, &PppoeSettings::password>("pppoepass", kPunctuationText),
                       choiceParam<&Network::ddns, &DdnsSettings::enable>("ddns", kOffOn),
                       choiceParam<&Network::ddns, &DdnsSettings::provider>("ddnsprovider", kDdnsProviders),
                       textParam<&Network::ddns, &DdnsSettings::host>("ddnshost", kNameText),
                       textParam<&Network::ddns, &DdnsSettings::user>("ddnsuser", kPunctuationText),
                       textParam<&Network::ddns, &DdnsSettings::password>("ddnspass", kPunctuationText),
                       choiceParam<&Network::upnp, &UpnpSettings::enable>("upnp", kOffOn),
                       integerParam<&Network::httpsvr, &HttpServerSettings::http_port>("httpport"),
                       integerParam<&Network::upnp, &UpnpSettings::http_external_port>("httpexternalport"),
                       integerParam<&Network::rtspsvr, &RtspServerSettings::rtsp_port>("rtspport"),
                       integerParam<&Network::upnp, &UpnpSettings::rtsp_external_port>("rtspexternalport"));

}  // namespace

class NetworkEndpoint final : public ClientEndpoint<StateEndpoint<kParams>> {
  int load() override {
    return read(state.lan, state.pppoe, state.ddns, state.httpsvr, state.rtspsvr, state.upnp);
  }

  int check(Network& wanted) override {
    const bool isPossible =
        checkPorts("httpport", wanted.httpsvr.http_port, "rtspport", wanted.rtspsvr.rtsp_port) == 200 &&
        checkPorts("httpexternalport", wanted.upnp.http_external_port, "rtspexternalport",
                   wanted.upnp.rtsp_external_port) == 200 &&
        canRun("pppoe", wanted.pppoe.enable != 0, {{"pppoeuser", wanted.pppoe.user}}) == 200 &&
        canRun("ddns", wanted.ddns.enable != 0,
               {{"ddnsprovider", wanted.ddns.provider},
                {"ddnshost", wanted.ddns.host},
                {"ddnsuser", wanted.ddns.user},
                {"ddnspass", wanted.ddns.password}}) == 200;
    return isPossible ? 200 : 400;
  }

  // Rejects equal ports only if the request gives one of them: a stored clash does not block other changes.
  int checkPorts(Param param, int port, Param other, int otherPort) {
    if (port != otherPort || !(given(param) || given(other))) return 200;
    if (!given(param)) std::swap(param, other);
    return refuse(param.name(), joined({"taken by ", other.name()}));
  }

  int reply() override {
    if (queries().empty()) warnOfPort(state.httpsvr.http_port);
    return StateEndpoint::reply();
  }

  int carryOut(Network& wanted) override {
    writeChanged(state.lan, wanted.lan);
    writeChanged(state.pppoe, wanted.pppoe);
    writeChanged(state.ddns, wanted.ddns);
    writeChanged(state.upnp, wanted.upnp);
    writeChanged(state.httpsvr, wanted.httpsvr);
    writeChanged(state.rtspsvr, wanted.rtspsvr);
    return commit();
  }
};

template struct EndpointOf<NetworkEndpoint>;

}  // namespace camera
