// wireless.cgi: its values and channels, and every combination of mode, authentication, encryption and key.
#include <cstring>
#include <optional>

#include "platform/store/records/wireless.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kWireless{
    "wireless.cgi",
    "product.region=0 wireless.enable=1 wireless.mode=0 wireless.auth=0 wireless.encryption=0 "
    "wireless.essid=Net wireless.channel=1 wireless.key=",
    "enable=on&mode=managed&essid=Net&chpatterns=11111111111&channel=1&auth=open&encryption=none",
    "set wireless 1"};

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

_wireless_setting record(int mode, int auth, int cipher, const std::string& key) {
  const auto byte = [](int number) { return static_cast<std::uint8_t>(number); };
  _wireless_setting wireless{1, byte(mode), byte(auth), byte(cipher), 5, "Net", ""};
  key.copy(wireless.key, sizeof wireless.key - 1);
  return wireless;
}

// Whether the endpoint does as the rules say.
testing::AssertionResult agrees(const Combination& c) {
  std::vector<std::uint8_t>& store = scripted().records[static_cast<std::size_t>(RecordIndex::wireless)];
  const _wireless_setting before = record(c.storedMode, c.storedAuth, c.storedCipher, c.storedKey);
  std::memcpy(store.data(), &before, sizeof before);
  const char* refusal = c.refusal();
  const Reply reply = request("wireless.cgi", c.query());
  const _wireless_setting after =
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
