// network.cgi, pppoe.cgi, ddns.cgi and wireless.cgi: their values, the ports that clash, that neither client
// is ever on without its texts, and every combination of mode, authentication, encryption and key.
#include <cstring>
#include <optional>

#include "platform/store/records/wireless.h"
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
      "httpport=80&dhcp=off&pppoeuser=pu dhcp=on&ip=10.1.0.2&netmask=255.255.0.0 "
      "gateway=10.0.0.9&dns1=&dns2=");
  kNetwork.accepts("upnp=on&httpexternalport=1&rtspexternalport=65535", "", "set upnp");
  kNetwork.accepts("httpport=443", "", "set httpsvr");  // the second port as well
  kNetwork.accepts("rtspport=80&httpport=554", "", "set httpsvr set rtspsvr");
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
  kNetwork.accepts("pppoe=off&pppoeuser=", "pppoe.enable=1", "set pppoe");
  kNetwork.accepts("ddns=on&ddnsprovider=velkorddns", "", "set ddns");
  kNetwork.accepts("ddns=off&ddnshost=&ddnsuser=&ddnspass=", "ddns.enable=1", "set ddns");
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

const Endpoint kWireless{
    "wireless.cgi",
    "product.region=0 wireless.enable=1 wireless.mode=0 wireless.auth=0 wireless.encryption=0 "
    "wireless.essid=Net wireless.channel=1 wireless.key=",
    "enable=on&mode=managed&essid=Net&chpatterns=11111111111&channel=1&auth=open&encryption=none",
    "set wireless"};

TEST(Wireless, ChecksEachValue) {
  const std::string hex64 = "0123456789abcdefABCDEF0123456789abcdefABCDEF0123456789abcdefABCD";
  const std::string hex26 = hex64.substr(0, 26);
  const std::string hex63 = hex64.substr(1);
  const std::string longest(32, 'n');
  const std::string punctuation = R"( !"#$%&'()*+,-./:;<=>?@[\]^_`{|}~)";
  const std::string encoded = R"(%20!"%23$%25%26'()*%2B,-./:;<=>?@[\]^_`{|}~)";
  const std::string wpa = "auth=WPA2-PSK&encryption=AES&";
  const std::string wep = "auth=shared&encryption=WEP&";
  const std::string wepReply = "auth=open&encryption=WEP&format=";
  kWireless.accepts(
      {{"enable=off&essid=" + longest},
       {wpa + "passphrase=8 charac", "", wpa + "passphrase=8 charac"},
       {wpa + "passphrase=" + encoded, "", wpa + "passphrase=" + punctuation},
       {wpa + "passphrase=" + hex63, "", wpa + "passphrase=" + hex63},
       {wpa + "passphrase=" + hex64, "", wpa + "passphrase=" + hex64},
       {wep + "key1=a+%7b%25x", "", wepReply + "ASCII&keylength=64&activekey=1&key1=a {%x"},
       {wep + "key1=012345abCD", "", wepReply + "hex&keylength=64&activekey=1&key1=012345abCD"},
       {wep + "key1=thirteen+char", "", wepReply + "ASCII&keylength=128&activekey=1&key1=thirteen char"},
       {wep + "key1=" + hex26, "", wepReply + "hex&keylength=128&activekey=1&key1=" + hex26}});
  // The table of words for auth has gaps; keys are checked where they are not used, too.
  kWireless.refuses("auth= activekey=2 enable=ON mode=adhoc encryption=wep essid= essid=n" + longest +
                    " key1=four passphrase=short");
  for (const std::string& bad : {std::string{"1234567"}, std::string{"with%09tab"}, "g" + hex63, "0" + hex64})
    kWireless.refuses(wpa + "!passphrase=" + bad);
  for (const char* bad : {"012345abCG", "elevenchars"}) kWireless.refuses(wep + "!key1=" + bad);
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
      const bool allowed = channel >= 1 && channel <= pattern.size() && pattern[channel - 1] == '1';
      const std::string query = "channel=" + std::to_string(channel);
      if (allowed)
        kWireless.accepts({{query, state, ""}});
      else
        kWireless.refuses(query, state);
    }
  }
}

// The rules between the values, against every combination, in the numbers of the record.

enum Mode { kManaged, kAdHoc };
enum Auth { kOpen, kShared, kWpaPsk, kWpa2Psk = 5, kOpenOrShared };
enum Cipher { kNone, kWep, kTkip, kAes };
constexpr int kAbsent = -1;
constexpr char kWepKey[] = "w-e-p";
constexpr char kWpaKey[] = "a long passphrase";

struct Combination {
  int storedMode, storedAuth, storedCipher;
  std::string storedKey;
  int newMode, newAuth, newCipher;  // or kAbsent
  std::optional<std::string> key1, passphrase;

  int mode() const { return newMode == kAbsent ? storedMode : newMode; }
  int auth() const { return newAuth == kAbsent ? storedAuth : newAuth; }
  int cipher() const { return newCipher == kAbsent ? storedCipher : newCipher; }
  static bool isWpa(int auth) { return auth == kWpaPsk || auth == kWpa2Psk; }
  static bool isOpen(int auth) { return auth == kOpen || auth == kShared; }
  static bool isPlain(int cipher) { return cipher == kNone || cipher == kWep; }
  static bool isAes(int cipher) { return cipher == kTkip || cipher == kAes; }

  const char* refusal() const {
    const std::pair<const char*, bool> rules[] = {
        {"ad-hoc with WPA", newMode == kAdHoc && isWpa(auth())},
        {"ad-hoc with TKIP or AES", newMode == kAdHoc && isAes(cipher())},
        {"WPA in ad-hoc mode", isWpa(newAuth) && mode() == kAdHoc},
        {"WPA with none or WEP", isWpa(newAuth) && isPlain(cipher())},
        {"WPA and no key", isWpa(newAuth) && !passphrase && storedKey.empty()},
        {"open or shared with TKIP or AES", isOpen(newAuth) && isAes(cipher())},
        {"WEP and no key", isOpen(newAuth) && cipher() == kWep && !key1 && storedKey.empty()},
        {"shared with none", newAuth == kShared && cipher() == kNone},
        {"none or WEP on WPA", isPlain(newCipher) && newAuth == kAbsent && isWpa(storedAuth)},
        {"none on shared", newCipher == kNone && newAuth == kAbsent && storedAuth == kShared},
        {"TKIP or AES without WPA", isAes(newCipher) && !isWpa(auth())},
        {"WEP on another key", newCipher == kWep && !key1 && storedKey != kWepKey},
        {"TKIP or AES in ad-hoc mode", isAes(newCipher) && mode() == kAdHoc},
        {"TKIP or AES on another key", isAes(newCipher) && !passphrase && storedKey != kWpaKey},
        {"the WEP key taken away", cipher() == kWep && key1 == ""},
        {"the passphrase taken away", isAes(cipher()) && passphrase == ""}};
    for (const auto& [rule, refuses] : rules)
      if (refuses) return rule;
    return nullptr;
  }

  // What an accepted combination leaves: the last merge that applies, or what was stored.
  int authLeft() const { return isOpen(newAuth) && cipher() == kWep ? kOpenOrShared : auth(); }
  std::string keyLeft() const {
    if (passphrase && cipher() != kWep) return *passphrase;
    return key1 && isPlain(cipher()) ? *key1 : storedKey;
  }

  std::string query() const {
    static constexpr const char* kModes[] = {"", "&mode=managed", "&mode=ad-hoc"};
    static constexpr const char* kAuths[] = {"", "&auth=open", "&auth=shared",  "&auth=WPA-PSK",
                                             "", "",           "&auth=WPA2-PSK"};
    static constexpr const char* kCiphers[] = {"", "&encryption=none", "&encryption=WEP", "&encryption=TKIP",
                                               "&encryption=AES"};
    return std::string{kModes[newMode + 1]} + kAuths[newAuth + 1] + kCiphers[newCipher + 1] +
           (key1 ? "&key1=" + *key1 : "") + (passphrase ? "&passphrase=" + *passphrase : "");
  }
};

WirelessSettings record(int mode, int auth, int cipher, const std::string& key) {
  const auto byte = [](int number) { return static_cast<std::uint8_t>(number); };
  WirelessSettings wireless{1, byte(mode), byte(auth), byte(cipher), 5, "Net", ""};
  key.copy(wireless.key, sizeof wireless.key - 1);
  return wireless;
}

// Whether the endpoint does as the rules say.
testing::AssertionResult agrees(const Combination& c) {
  std::vector<std::uint8_t>& store = scripted().records[static_cast<std::size_t>(RecordIndex::wireless)];
  const WirelessSettings before = record(c.storedMode, c.storedAuth, c.storedCipher, c.storedKey);
  std::memcpy(store.data(), &before, sizeof before);
  const char* refusal = c.refusal();
  const Reply reply = request("wireless.cgi", c.query());
  const WirelessSettings after =
      refusal == nullptr ? record(c.mode(), c.authLeft(), c.cipher(), c.keyLeft()) : before;
  if (reply.status == (refusal == nullptr ? 200 : 400) &&
      std::memcmp(store.data(), &after, sizeof after) == 0 &&
      (refusal != nullptr || request("wireless.cgi", "").body == reply.body))
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << "stored " << c.storedMode << c.storedAuth << c.storedCipher
                                     << ", key '" << c.storedKey << "'; given " << c.query()
                                     << "; refused: " << (refusal == nullptr ? "no" : refusal)
                                     << "; answered " << reply.body;
}

TEST(Wireless, AcceptsACombinationExactlyWhenNoRuleRefusesIt) {
  using Given = std::optional<std::string>;
  const std::pair<Given, Given> keys[] = {{{}, {}}, {"abcde", {}},      {"", {}},
                                          {{}, ""}, {{}, "passphrase"}, {"abcde", "passphrase"}};
  scripted().reset();
  for (const int mode : {kManaged, kAdHoc})
    for (const int auth : {kOpen, kShared, kWpaPsk, kWpa2Psk, kOpenOrShared})
      for (const int cipher : {kNone, kWep, kTkip, kAes})
        for (const char* key : {"", kWepKey, kWpaKey})
          for (int newMode = kAbsent; newMode <= kAdHoc; ++newMode)
            for (const int newAuth : {kAbsent, +kOpen, +kShared, +kWpaPsk, +kWpa2Psk})
              for (int newCipher = kAbsent; newCipher <= kAes; ++newCipher)
                for (const auto& [key1, passphrase] : keys)
                  ASSERT_TRUE(
                      agrees({mode, auth, cipher, key, newMode, newAuth, newCipher, key1, passphrase}));
}

}  // namespace
}  // namespace camera::test
