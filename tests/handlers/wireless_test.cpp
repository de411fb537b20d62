// wireless.cgi: its values and channels, and every combination of mode, authentication, encryption and key.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>

#include "platform/store/records/wireless.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kWireless{
    .cgi = "wireless.cgi",
    .state =
        "product.region=0 wireless.enable=1 wireless.mode=0 wireless.auth=0 wireless.encryption=0 "
        "wireless.essid=Net wireless.channel=1 wireless.key=",
    .reply = "enable=on&mode=managed&essid=Net&chpatterns=11111111111&channel=1&auth=open&encryption=none",
    .writes = "set wireless 1"};

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

// The rules between the values, one a line, against every combination.

using Word = std::string_view;
using Given = std::optional<Word>;

constexpr Word kWepKey = "w-e-p";
constexpr Word kWpaKey = "a long passphrase";

struct Combination {
  Word storedMode, storedAuth, storedCipher, storedKey;
  Given newMode, newAuth, newCipher, key1, passphrase;

  Word mode() const { return newMode.value_or(storedMode); }
  Word auth() const { return newAuth.value_or(storedAuth); }
  Word cipher() const { return newCipher.value_or(storedCipher); }
};
using C = const Combination&;

bool isWpa(Given auth) {
  return auth == "WPA-PSK" || auth == "WPA2-PSK";
}
bool isOpen(Given auth) {
  return auth == "open" || auth == "shared";
}
bool isPlain(Given cipher) {
  return cipher == "none" || cipher == "WEP";
}
bool isAes(Given cipher) {
  return cipher == "TKIP" || cipher == "AES";
}

constexpr struct {
  const char* refused;
  bool (*when)(C);
} kRules[] = {
    {"ad-hoc with WPA", [](C c) { return c.newMode == "ad-hoc" && isWpa(c.auth()); }},
    {"ad-hoc with TKIP or AES", [](C c) { return c.newMode == "ad-hoc" && isAes(c.cipher()); }},
    {"WPA in ad-hoc mode", [](C c) { return isWpa(c.newAuth) && c.mode() == "ad-hoc"; }},
    {"WPA with none or WEP", [](C c) { return isWpa(c.newAuth) && isPlain(c.cipher()); }},
    {"WPA and no key", [](C c) { return isWpa(c.newAuth) && !c.passphrase && c.storedKey.empty(); }},
    {"open or shared with TKIP or AES", [](C c) { return isOpen(c.newAuth) && isAes(c.cipher()); }},
    {"open or shared with WEP and no key",
     [](C c) { return isOpen(c.newAuth) && c.cipher() == "WEP" && !c.key1 && c.storedKey.empty(); }},
    {"shared with none", [](C c) { return c.newAuth == "shared" && c.cipher() == "none"; }},
    {"none or WEP on WPA", [](C c) { return isPlain(c.newCipher) && !c.newAuth && isWpa(c.storedAuth); }},
    {"none on shared", [](C c) { return c.newCipher == "none" && !c.newAuth && c.storedAuth == "shared"; }},
    {"TKIP or AES without WPA", [](C c) { return isAes(c.newCipher) && !isWpa(c.auth()); }},
    {"WEP on another key", [](C c) { return c.newCipher == "WEP" && !c.key1 && c.storedKey != kWepKey; }},
    {"TKIP or AES in ad-hoc mode", [](C c) { return isAes(c.newCipher) && c.mode() == "ad-hoc"; }},
    {"TKIP or AES on another key",
     [](C c) { return isAes(c.newCipher) && !c.passphrase && c.storedKey != kWpaKey; }},
    {"the WEP key taken away", [](C c) { return c.cipher() == "WEP" && c.key1 == ""; }},
    {"the passphrase taken away", [](C c) { return isAes(c.cipher()) && c.passphrase == ""; }},
};

// What an accepted combination leaves: the last merge that applies, or what was stored.
Word authLeft(C c) {
  return isOpen(c.newAuth) && c.cipher() == "WEP" ? "open or shared" : c.auth();
}
Word keyLeft(C c) {
  if (c.passphrase && c.cipher() != "WEP") return *c.passphrase;
  return c.key1 && isPlain(c.cipher()) ? *c.key1 : c.storedKey;
}

constexpr Word kModes[] = {"managed", "ad-hoc"};
constexpr Word kAuths[] = {"open", "shared", "WPA-PSK", "", "", "WPA2-PSK", "open or shared"};
constexpr Word kCiphers[] = {"none", "WEP", "TKIP", "AES"};

template <std::size_t N>
std::uint8_t numberOf(Word word, const Word (&words)[N]) {
  return static_cast<std::uint8_t>(std::find(words, words + N, word) - words);
}

_wireless_setting record(Word mode, Word auth, Word cipher, Word key) {
  _wireless_setting wireless{.enable = 1,
                             .mode = numberOf(mode, kModes),
                             .auth = numberOf(auth, kAuths),
                             .encryption = numberOf(cipher, kCiphers),
                             .channel = 5,
                             .essid = "Net",
                             .key = ""};
  key.copy(wireless.key, sizeof wireless.key - 1);
  return wireless;
}

std::string queryOf(C c) {
  std::string query;
  const std::pair<const char*, Given> values[] = {{"&mode=", c.newMode},
                                                  {"&auth=", c.newAuth},
                                                  {"&encryption=", c.newCipher},
                                                  {"&key1=", c.key1},
                                                  {"&passphrase=", c.passphrase}};
  for (const auto& [name, value] : values)
    if (value) query.append(name).append(*value);
  return query;
}

// Whether the endpoint does as the rules say.
testing::AssertionResult agrees(C c) {
  std::vector<std::uint8_t>& store = scripted().records[static_cast<std::size_t>(RecordIndex::wireless)];
  const _wireless_setting before = record(c.storedMode, c.storedAuth, c.storedCipher, c.storedKey);
  std::memcpy(store.data(), &before, sizeof before);
  const auto* rule =
      std::find_if(std::begin(kRules), std::end(kRules), [&](const auto& r) { return r.when(c); });
  const bool refused = rule != std::end(kRules);
  const Reply reply = request("wireless.cgi", queryOf(c));
  const _wireless_setting after = refused ? before : record(c.mode(), authLeft(c), c.cipher(), keyLeft(c));
  const bool readsBack = refused || request("wireless.cgi", "").body == reply.body;
  if (reply.status == (refused ? 400 : 200) && readsBack &&
      std::memcmp(store.data(), &after, sizeof after) == 0)
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << "stored " << c.storedMode << ", " << c.storedAuth << ", "
                                     << c.storedCipher << ", key '" << c.storedKey << "'; given "
                                     << queryOf(c) << "; refused: " << (refused ? rule->refused : "no")
                                     << "; answered " << reply.body;
}

TEST(Wireless, AcceptsACombinationExactlyWhenNoRuleRefusesIt) {
  const Given modes[] = {std::nullopt, "managed", "ad-hoc"};
  const Given auths[] = {std::nullopt, "open", "shared", "WPA-PSK", "WPA2-PSK"};
  const Given ciphers[] = {std::nullopt, "none", "WEP", "TKIP", "AES"};
  const std::pair<Given, Given> keys[] = {{std::nullopt, std::nullopt}, {"abcde", std::nullopt},
                                          {"", std::nullopt},           {std::nullopt, "passphrase"},
                                          {std::nullopt, ""},           {"abcde", "passphrase"}};
  scripted().reset();
  for (const Word mode : kModes)
    for (const Word auth : {"open", "shared", "WPA-PSK", "WPA2-PSK", "open or shared"})
      for (const Word cipher : kCiphers)
        for (const Word key : {Word{}, kWepKey, kWpaKey})
          for (const Given& newMode : modes)
            for (const Given& newAuth : auths)
              for (const Given& newCipher : ciphers)
                for (const auto& [key1, passphrase] : keys)
                  ASSERT_TRUE(
                      agrees({mode, auth, cipher, key, newMode, newAuth, newCipher, key1, passphrase}));
}

}  // namespace
}  // namespace camera::test
