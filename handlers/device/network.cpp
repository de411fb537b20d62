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

constexpr auto kParams = paramRows<Network>(
    choiceParam<&Network::lan, &LanSettings::dhcp>("dhcp", kOffOn),
    addressParam<&Network::lan, &LanSettings::ip>("ip"),
    textParam<&Network::lan, &LanSettings::netmask>("netmask", ".", kDigits)
        .also(isNetmask, "an IPv4 netmask"),
    addressParam<&Network::lan, &LanSettings::gateway>("gateway"),
    addressParam<&Network::lan, &LanSettings::dns1>("dns1", kAddressOrNone),
    addressParam<&Network::lan, &LanSettings::dns2>("dns2", kAddressOrNone),
    choiceParam<&Network::pppoe, &PppoeSettings::enable>("pppoe", kOffOn),
    textParam<&Network::pppoe, &PppoeSettings::user>("pppoeuser", kPunctuationText),
    textParam<&Network::pppoe, &PppoeSettings::password>("pppoepass", kPunctuationText).secret(),
    choiceParam<&Network::ddns, &DdnsSettings::enable>("ddns", kOffOn),
    choiceParam<&Network::ddns, &DdnsSettings::provider>("ddnsprovider", kDdnsProviders),
    textParam<&Network::ddns, &DdnsSettings::host>("ddnshost", kNameText),
    textParam<&Network::ddns, &DdnsSettings::user>("ddnsuser", kPunctuationText),
    textParam<&Network::ddns, &DdnsSettings::password>("ddnspass", kPunctuationText).secret(),
    choiceParam<&Network::upnp, &UpnpSettings::enable>("upnp", kOffOn),
    integerParam<&Network::httpsvr, &HttpServerSettings::http_port>("httpport"),
    integerParam<&Network::upnp, &UpnpSettings::http_external_port>("httpexternalport"),
    integerParam<&Network::rtspsvr, &RtspServerSettings::rtsp_port>("rtspport"),
    integerParam<&Network::upnp, &UpnpSettings::rtsp_external_port>("rtspexternalport"));

// JSON schemas of addresses and netmasks. In a netmask, 255 alone stands above another byte, 0 alone below.
constexpr std::string_view kByte = "(25[0-5]|2[0-4][0-9]|1[0-9]{2}|[1-9]?[0-9])";
constexpr std::string_view kTopBits = "(128|192|224|240|248|252|254|255)";

std::string addressSchema(const char* last) {
  return joined({R"("type":"string","pattern":"^()", kByte, "([.]", kByte, "){3})", last,
                 R"($","not":{"const":"255.255.255.255"})"});
}

std::string netmaskSchema() {
  return joined({R"("type":"string","pattern":"^()", kTopBits, "[.]0[.]0[.]0|255[.]((0|", kTopBits,
                 ")[.]0[.]0|255[.]((0|", kTopBits, ")[.]0|255[.](0|", kTopBits, R"())))$")"});
}

std::string schemaOf(std::string_view param, const ProductInfo& /*product*/) {
  if (param == "ip" || param == "gateway") return addressSchema("");
  if (param == "dns1" || param == "dns2") return addressSchema("?");
  return param == "netmask" ? netmaskSchema() : "";
}

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
    if (queries().empty()) warnOfPort({state.httpsvr.http_port, state.httpsvr.alt_port});
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

template <>
const Api kApi<NetworkEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kNetwork,
     .summary = "All settings of the wired network: addresses, PPPoE and dynamic DNS clients, server ports "
                "and UPnP port mapping.",
     .records = "`lan`, `pppoe`, `ddns`, `upnp`, `httpsvr`, `rtspsvr`",
     .dependent = "pppoe ddns httpport httpexternalport rtspport rtspexternalport",
     .params =
         {{"dhcp",
           "With `on`, the camera gets its address by DHCP; the static one is kept and can still be "
           "changed."},
          {"ip", "The static address; `0.0.0.0` means none.", nullptr, "192.168.0.60"},
          {"netmask", "The netmask of the static address.", nullptr, "255.255.255.0"},
          {"gateway", "The default gateway; `0.0.0.0` means none.", nullptr, "192.168.0.1"},
          {"dns1", "The first DNS server; empty or `0.0.0.0` means none.", nullptr, "192.168.0.1"},
          {"dns2", "The second DNS server; empty or `0.0.0.0` means none.", nullptr, "192.168.0.2"},
          {"pppoe", "Switches the PPPoE client; `on` needs `pppoeuser`, given or stored."},
          {"pppoeuser", "The PPPoE account's name; must not be empty while `pppoe` is `on`.", nullptr,
           "line7"},
          {"pppoepass", "The PPPoE account's password.", nullptr, "secret"},
          {"ddns", "Switches the dynamic DNS client; `on` needs the four values after it, given or stored."},
          {"ddnsprovider", "The provider of the dynamic DNS service."},
          {"ddnshost", "The host name to register; must not be empty while `ddns` is `on`.", nullptr,
           "hall.example.net"},
          {"ddnsuser", "The account at the provider; must not be empty while `ddns` is `on`.", nullptr, "me"},
          {"ddnspass", "That account's password; must not be empty while `ddns` is `on`.", nullptr, "secret"},
          {"upnp", "Switches UPnP port mapping."},
          {"httpport", "The port of the web server, which moves as with httpport.cgi; not the RTSP server's.",
           nullptr, "8081"},
          {"httpexternalport", "The router's port that leads to the web server; not `rtspexternalport`.",
           nullptr, "8081"},
          {"rtspport", "The port of the RTSP server; not the web server's.", nullptr, "8554"},
          {"rtspexternalport", "The router's port that leads to the RTSP server; not `httpexternalport`.",
           nullptr, "8554"}},
     .state = factoryState<Network>,
     .schema = schemaOf});
template struct EndpointOf<NetworkEndpoint>;

}  // namespace camera
