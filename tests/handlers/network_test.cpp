// network.cgi, pppoe.cgi, ddns.cgi and wireless.cgi: their values, the ports that clash, that no client is on
// without its texts, and which mode, authentication, encryption and key fit together.
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
    "set lan"};
const Endpoint kPppoe{"pppoe.cgi", kState, "pppoe=off&user=pu&pass=pp", "set pppoe"};
const Endpoint kDdns{"ddns.cgi", kState, "ddns=off&provider=dyndns&host=dh&user=du&pass=dp", "set ddns"};

TEST(Network, ChangesWhatIsNamedAndNothingElse) {
  kNetwork.accepts(
      "httpport=80&dhcp=off dhcp=on&ip=10.1.0.2&netmask=255.255.0.0 gateway=10.0.0.9&dns1=&dns2=");
  kNetwork.accepts("upnp=on&httpexternalport=1&rtspexternalport=65535", "", "set upnp");
  kNetwork.accepts("rtspport=80&httpport=443", "", "set httpsvr set rtspsvr");  // the second port as well
  // What was stored in a clash or incomplete stays as it is until the request names it.
  kNetwork.accepts("upnp=on", "httpsvr.http_port=554 upnp.http_external_port=8554", "set upnp");
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
  kNetwork.accepts("pppoe=on&pppoepass=", "", "set pppoe");
  kNetwork.accepts("ddns=off&ddnshost=&ddnsuser=&ddnspass=", "ddns.enable=1", "set ddns");
  kNetwork.refuses("pppoeuser= ddnshost= ddnsuser= ddnspass= ddnsprovider=", "pppoe.enable=1 ddns.enable=1");
  kNetwork.refuses("!pppoe=on&!pppoeuser= !ddns=on&!ddnspass= pppoeuser=a+b ddnshost=a/b");
}

TEST(PPPoE, IsNeverOnWithoutAUser) {
  const std::string user(32, 'u');
  const std::string pass(60, '~');
  kPppoe.accepts({{"pppoe=on&user=you", "pppoe.user="}, {"user=" + user + "&pass=" + pass}});
  kPppoe.refuses("pppoe=On user=a+b pass=a+b user=u" + user + " pass=~" + pass);
  kPppoe.refuses("!pppoe=on&!user", "pppoe.user=");
}

TEST(Ddns, IsNeverOnWithoutAllItsTexts) {
  const std::string host(36, 'h');
  const std::string text(30, '~');
  kDdns.accepts("ddns=on&provider=velkorddns host=A9_-.z");
  kDdns.accepts({{"ddns=on&host=h&user=u&pass=p", "ddns.host= ddns.user= ddns.password="},
                 {"user=u", "ddns.enable=1 ddns.host="},
                 {"host=&user=&pass=&ddns=off", "ddns.enable=1"},
                 {"host=" + host + "&user=" + text + "&pass=" + text}});
  kDdns.refuses("provider=other provider= host=a/b user=a+b host=h" + host + " user=~" + text + " pass=~" +
                text);
  kDdns.refuses("host= user= pass=", "ddns.enable=1");
  kDdns.refuses("!ddns=on&!provider", "ddns.provider=");
  kDdns.refuses("!ddns=on&!pass", "ddns.password=");
}

const Endpoint kWireless{
    "wireless.cgi",
    "product.region=0 wireless.enable=1 wireless.mode=0 wireless.auth=0 wireless.encryption=0 "
    "wireless.essid=Net wireless.channel=1 wireless.key=",
    "enable=on&mode=managed&essid=Net&chpatterns=11111111111&channel=1&auth=open&encryption=none",
    "set wireless"};

// Stored states, with auth and encryption as numbers.
const std::string kMixed = "wireless.auth=6 wireless.encryption=1 wireless.key=w-e-p";
const std::string kSharedWep = "wireless.auth=1 wireless.encryption=1 wireless.key=w-e-p";
const std::string kWpa = "wireless.auth=2 wireless.encryption=3 wireless.key=passphrase";
const std::string kAdHocWpa = "wireless.mode=1 " + kWpa;

TEST(Wireless, ChecksEachValue) {
  const std::string hex64 = "0123456789abcdefABCDEF0123456789abcdefABCDEF0123456789abcdefABCD";
  const std::string hex26 = hex64.substr(0, 26);
  const std::string hex63 = hex64.substr(1);
  const std::string longest(32, 'n');
  const std::string punctuation = R"( !"#$%&'()*+,-./:;<=>?@[\]^_`{|}~)";
  const std::string encoded = R"(%20!"%23$%25%26'()*%2B,-./:;<=>?@[\]^_`{|}~)";
  kWireless.accepts({{"enable=off&essid=" + longest},
                     {"passphrase=8 charac", kWpa, "passphrase=8 charac"},
                     {"passphrase=" + encoded, kWpa, "passphrase=" + punctuation},
                     {"passphrase=" + hex63, kWpa},
                     {"passphrase=" + hex64, kWpa},
                     {"key1=a+%7b%25x", kMixed, "key1=a {%x"},
                     {"key1=012345abCD", kMixed, "format=hex&key1=012345abCD"},
                     {"key1=thirteen+char", kMixed, "keylength=128&key1=thirteen char"},
                     {"key1=" + hex26, kMixed, "format=hex&keylength=128&key1=" + hex26}});
  // The words for auth have gaps; keys are checked even where they are not used.
  kWireless.refuses("auth= activekey=2 enable=ON mode=adhoc encryption=wep essid= essid=n" + longest);
  kWireless.refuses("key1=four key1=012345abCG key1=elevenchars passphrase=1234567 passphrase=with%09tab");
  kWireless.refuses("passphrase=g" + hex63 + " passphrase=0" + hex64);
}

TEST(Wireless, AppliesAChannelOfTheRegionInAdHocModeAlone) {
  kWireless.accepts({{"channel=6", "", ""},
                     {"channel=6&mode=managed", "wireless.mode=1", "mode=managed"},
                     {"channel=6&mode=ad-hoc"},
                     {"channel=6", "wireless.mode=1"},
                     {"activekey=1&chpatterns=&format=%00&keylength=1&key2=%ff&key3=x&key4=y", "", ""}});
  kWireless.refuses("channel=-6", "wireless.mode=1");
  int region = 0;
  for (const std::string pattern : {"11111111111", "1111111111111", "00000000011", "0000000001111",
                                    "00000000000001", "11111111111111", "001111111", "0000111111111", ""}) {
    const std::string state = "product.region=" + std::to_string(region++);
    kWireless.accepts({{"", state, "chpatterns=" + pattern}});
    for (std::size_t channel = 0; channel <= 16; ++channel) {
      const bool isAllowed = channel >= 1 && channel <= pattern.size() && pattern[channel - 1] == '1';
      scripted().reset(kWireless.state + " " + state);
      EXPECT_EQ(request("wireless.cgi", "channel=" + std::to_string(channel)).status, isAllowed ? 200 : 400);
    }
  }
}

TEST(Wireless, RefusesWhatDoesNotFitTogether) {
  kWireless.refuses("mode=ad-hoc", kWpa);
  kWireless.refuses("mode=ad-hoc", "wireless.auth=5");
  kWireless.refuses("mode=ad-hoc", "wireless.encryption=2");
  kWireless.refuses("!mode=ad-hoc&auth=WPA-PSK !mode=ad-hoc&encryption=AES");
  kWireless.refuses("auth=WPA-PSK auth=WPA2-PSK&passphrase=12345678 encryption=AES", kAdHocWpa);
  kWireless.refuses("auth=WPA-PSK", kMixed);
  kWireless.refuses("auth=WPA2-PSK", "wireless.key=passphrase");
  kWireless.refuses("auth=WPA2-PSK", "wireless.encryption=2");  // no key
  kWireless.refuses("auth=open auth=shared", kWpa);
  kWireless.refuses("auth=open auth=shared", "wireless.encryption=1");
  kWireless.refuses("auth=shared !auth=open&encryption=TKIP !auth=shared&encryption=WEP");
  kWireless.refuses("!auth=open&key1= encryption=none&!auth=shared", kMixed);
  kWireless.refuses("encryption=AES encryption=TKIP&passphrase=12345678", "wireless.key=passphrase");
  kWireless.refuses("encryption=none encryption=WEP&key1=abcde", kWpa);
  kWireless.refuses("encryption=none", kSharedWep);
  kWireless.refuses("encryption=WEP", "wireless.key=passphrase");
  kWireless.refuses("encryption=WEP&key1=", "wireless.key=w-e-p");
  kWireless.refuses("encryption=AES auth=WPA-PSK&!encryption=TKIP", "wireless.auth=2 wireless.key=short");
  kWireless.refuses("key1=", kMixed);
  kWireless.refuses("passphrase=", kWpa);
}

TEST(Wireless, StoresWhatFitsTogether) {
  const struct {
    std::string stored, query, left;  // left: mode, auth, encryption and key
  } rows[] = {
      {"", "mode=ad-hoc", "100"},
      {kMixed, "mode=ad-hoc", "161w-e-p"},
      {kWpa, "mode=managed", "023passphrase"},
      {kAdHocWpa, "mode=managed&auth=WPA2-PSK", "053passphrase"},
      {"wireless.auth=5 wireless.encryption=2 wireless.key=passphrase", "auth=WPA-PSK", "022passphrase"},
      {"wireless.encryption=2", "auth=WPA2-PSK&passphrase=12345678", "05212345678"},
      {kWpa, "auth=open&encryption=none", "000passphrase"},
      {kWpa, "auth=shared&encryption=WEP&key1=abcde", "061abcde"},
      {kMixed, "auth=open&encryption=none", "000w-e-p"},
      {"wireless.encryption=1", "auth=shared&key1=abcde", "061abcde"},
      {"wireless.auth=1", "auth=open", "000"},
      {kMixed, "encryption=none", "060w-e-p"},
      {kMixed, "auth=WPA-PSK&encryption=AES&passphrase=12345678", "02312345678"},
      {kWpa, "encryption=TKIP", "022passphrase"},
      {"wireless.auth=5 wireless.key=passphrase", "encryption=AES", "053passphrase"},
      {"wireless.auth=2 wireless.key=short", "encryption=AES&passphrase=12345678", "02312345678"},
      {"wireless.key=w-e-p", "encryption=WEP", "001w-e-p"},
      {"wireless.auth=1", "encryption=WEP&key1=abcde", "011abcde"},
      {kMixed, "key1=abcde", "061abcde"},
      {kMixed, "passphrase=", "061w-e-p"},
      {kMixed, "passphrase=12345678", "061w-e-p"},
      {kWpa, "key1=", "023passphrase"},
      {kWpa, "key1=abcde&passphrase=12345678", "02312345678"},
      {"wireless.key=w-e-p", "key1=", "000"},
      {"", "key1=abcde", "000abcde"},
      {"", "key1=abcde&passphrase=12345678", "00012345678"}};
  for (const auto& [stored, query, left] : rows) {
    scripted().reset(kWireless.state + " " + stored);
    const Reply reply = request("wireless.cgi", query);
    EXPECT_EQ(reply.status, 200) << stored << " " << query << reply.body;
    std::string now;
    for (const char* name : {"mode", "auth", "encryption", "key"})
      now += scripted().stored(std::string{"wireless."} + name);
    EXPECT_EQ(now, left) << stored << " " << query;
  }
}

}  // namespace
}  // namespace camera::test
