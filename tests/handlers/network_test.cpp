// network.cgi, pppoe.cgi and ddns.cgi: their values, the ports that clash, and that neither client is ever
// switched on, or left on, without its texts.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kState[] =
    "lan.dhcp=0 lan.ip=10.0.0.2 lan.netmask=255.0.0.0 lan.gateway=10.0.0.1 lan.dns1=10.0.0.3 "
    "lan.dns2=10.0.0.4 pppoe.enable=0 pppoe.user=pu pppoe.password=pp ddns.enable=0 ddns.provider=dyndns "
    "ddns.host=dh ddns.user=du ddns.password=dp upnp.enable=0 upnp.http_external_port=8080 "
    "upnp.rtsp_external_port=8554 httpsvr.http_port=80 httpsvr.alt_port=443 rtspsvr.rtsp_port=554";

const Endpoint kNetwork{
    "network.cgi", kState,
    "dhcp=off&ip=10.0.0.2&netmask=255.0.0.0&gateway=10.0.0.1&dns1=10.0.0.3&dns2=10.0.0.4&pppoe=off&pppoeuser="
    "pu&pppoepass=pp&ddns=off&ddnsprovider=dyndns&ddnshost=dh&ddnsuser=du&ddnspass=dp&upnp=off&httpport=80&"
    "httpexternalport=8080&rtspport=554&rtspexternalport=8554",
    "set lan 1"};
const Endpoint kPppoe{"pppoe.cgi", kState, "pppoe=off&user=pu&pass=pp", "set pppoe 1"};
const Endpoint kDdns{"ddns.cgi", kState, "ddns=off&provider=dyndns&host=dh&user=du&pass=dp", "set ddns 1"};

TEST(Network, ChangesWhatIsNamedAndNothingElse) {
  kNetwork.accepts(
      "httpport=80&dhcp=off&pppoeuser=pu dhcp=on&ip=10.1.0.2&netmask=255.255.0.0 "
      "gateway=10.0.0.9&dns1=&dns2=");
  kNetwork.accepts("upnp=on&httpexternalport=1&rtspexternalport=65535", "", "set upnp 1");
  kNetwork.accepts("httpport=443", "", "set httpsvr 1");  // the second port as well
  kNetwork.accepts("rtspport=80&httpport=554", "", "set httpsvr 1 set rtspsvr 1");
  // What was stored in a clash or incomplete stays as it is until the request names it.
  kNetwork.accepts("upnp=on", "httpsvr.http_port=554 upnp.http_external_port=8554", "set upnp 1");
  kNetwork.accepts("dhcp=on", "ddns.enable=1 ddns.host= pppoe.enable=1 pppoe.user=");
}

TEST(Network, RefusesWhatCannotBe) {
  kNetwork.refuses(
      "dhcp=1 ip= ip=10.0.0.256 ip=10.0.0.2%00 netmask= netmask=255.0.255.0 gateway= gateway=camera "
      "dns1=10.0.0. dns2=::1 upnp= httpport=0 httpport=65536 rtspport=0 httpexternalport=0 "
      "rtspexternalport=65536 dhcp=on&!user=me !httpport=80&!rtspport=80 httpport=554 rtspport=80 "
      "!httpexternalport=9&!rtspexternalport=9 httpexternalport=8554 rtspexternalport=8080");
  kNetwork.refuses("httpport=80 rtspport=80", "rtspsvr.rtsp_port=80");  // named, though stored as it is
}

TEST(Network, HoldsTheClientsToTheRulesOfTheirOwnEndpoints) {
  kNetwork.accepts("pppoe=on&pppoepass=", "", "set pppoe 1");
  kNetwork.accepts("pppoe=off&pppoeuser=", "pppoe.enable=1", "set pppoe 1");
  kNetwork.accepts("ddns=on&ddnsprovider=velkorddns", "", "set ddns 1");
  kNetwork.accepts("ddns=off&ddnshost=&ddnsuser=&ddnspass=", "ddns.enable=1", "set ddns 1");
  kNetwork.refuses("pppoeuser= !pppoe=on&!pppoeuser=", "pppoe.enable=1");
  kNetwork.refuses("ddnshost= ddnsuser= ddnspass= ddnsprovider=", "ddns.enable=1");
  kNetwork.refuses("!ddns=on&!ddnshost !ddns=on&!ddnshost&ddnsprovider=dyndns", "ddns.host=");
  kNetwork.refuses("pppoeuser=a+b ddnshost=a/b pppoe=1 ddns=1");
}

TEST(PPPoE, IsNeverOnWithoutAUser) {
  const std::string user(32, 'u');
  const std::string pass(60, '~');
  kPppoe.accepts("pppoe=on pppoe=off&user=pu user=");
  kPppoe.accepts({{"pppoe=on&user=you", "pppoe.user="},
                  {"user=&pppoe=off", "pppoe.enable=1"},
                  {"pass=", "pppoe.enable=1"},
                  {"user=" + user + "&pass=" + pass}});
  kPppoe.refuses("pppoe=On user=a+b user=u" + user + " pass=~" + pass + " pppoe=on&!user=");
  kPppoe.refuses("!pppoe=on&!user", "pppoe.user=");
  kPppoe.refuses("user=", "pppoe.enable=1");
}

TEST(Ddns, IsNeverOnWithoutAllItsTexts) {
  const std::string host(36, 'h');
  const std::string text(30, '~');
  kDdns.accepts("ddns=on&provider=velkorddns ddns=off&host=dh host=A9_-.z");
  kDdns.accepts({{"ddns=on&host=h&user=u&pass=p", "ddns.host= ddns.user= ddns.password="},
                 {"user=u", "ddns.enable=1 ddns.host="},
                 {"host=&user=&pass=&ddns=off", "ddns.enable=1"},
                 {"host=" + host + "&user=" + text + "&pass=" + text}});
  kDdns.refuses("provider=other provider= host=a/b user=a+b host=h" + host + " user=~" + text + " pass=~" +
                text);
  kDdns.refuses("host= user= pass=", "ddns.enable=1");
  for (const std::string missing : {"provider", "host", "user"})
    kDdns.refuses("!ddns=on&!" + missing, "ddns." + missing + "=");
  kDdns.refuses("!ddns=on&!pass", "ddns.password=");
}

}  // namespace
}  // namespace camera::test
