// wireless.cgi: its values and channels, and every combination of mode, authentication, encryption and key.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>

#include "platform/store/records/wireless.h"
#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kWritten[] = "clean set wireless 1 work wireless";
constexpr char kOpenNet[] =
    "wireless.enable=1 wireless.mode=0 wireless.auth=0 wireless.encryption=0 wireless.essid=Net "
    "wireless.channel=1 wireless.key=";

TEST(Wireless, ChecksEachValue) {
  const std::string hex64 = "0123456789abcdefABCDEF0123456789abcdefABCDEF0123456789abcdefABCD";
  const std::string hex26 = hex64.substr(0, 26);
  const std::string hex63 = hex64.substr(1);
  const std::string wpa = "auth=WPA2-PSK&encryption=AES&passphrase=";
  const std::string wep = "auth=shared&encryption=WEP&key1=";
  const std::string punctuation = R"(!"#$%&'()*+,-./:;<=>?@[\]^_`{|}~)";
  const std::string encoded = R"(!"%23$%25%26'()*%2B,-./:;<=>?@[\]^_`{|}~)";
  const std::string longest(32, 'n');
  const std::pair<std::string, std::string> accepted[] = {
      {"essid=" + longest,
       "essid=" + longest + " chpatterns=11111111111 channel=1 auth=open encryption=none "},
      {wpa + "8 charac", " auth=WPA2-PSK encryption=AES passphrase=8 charac "},
      {wpa + "%20" + encoded, " passphrase= " + punctuation + " "},
      {wpa + hex63, " passphrase=" + hex63 + " "},
      {wpa + hex64, " passphrase=" + hex64 + " "},
      {wep + "a+%7b%25x", " auth=open encryption=WEP format=ASCII keylength=64 activekey=1 key1=a {%x "},
      {wep + "012345abCD", " format=hex keylength=64 activekey=1 key1=012345abCD "},
      {wep + "thirteen char", " format=ASCII keylength=128 activekey=1 key1=thirteen char "},
      {wep + hex26, " format=hex keylength=128 activekey=1 key1=" + hex26 + " "},
  };
  for (const auto& [query, end] : accepted) {
    scripted().reset();
    scripted().store(kOpenNet);
    const Reply reply = request("wireless.cgi", query);
    EXPECT_TRUE(reply.status == 200 && reply.body.ends_with(end)) << query << " " << reply.body;
    EXPECT_EQ(scripted().writes(), kWritten) << query;
  }
  // The table of words for auth has gaps; keys are checked where they are not used, too.
  expectRefused("wireless.cgi", kOpenNet,
                {"auth=", "activekey=2", "enable=ON", "mode=adhoc", "encryption=wep", "essid=",
                 "essid=n" + longest, "key1=four", "passphrase=short", wpa + "1234567", wpa + "with%09tab",
                 wpa + "g" + hex63, wpa + "0" + hex64, wep + "012345abCG", wep + "elevenchars"});
}

TEST(Wireless, AppliesAChannelOfTheRegionInAdHocModeAlone) {
  constexpr char kManaged[] =
      "enable=on mode=managed essid=Net chpatterns=11111111111 channel=1 auth=open encryption=none ";
  constexpr char kAdHoc[] =
      "enable=on mode=ad-hoc essid=Net chpatterns=11111111111 channel=6 auth=open encryption=none ";
  expectRows(
      "wireless.cgi", kOpenNet,
      {
          {"channel=6", "", 200, kManaged, ""},
          {"channel=6&mode=managed", "wireless.mode=1", 200, kManaged, kWritten},
          {"channel=6&mode=ad-hoc", "", 200, kAdHoc, kWritten},
          {"channel=6", "wireless.mode=1", 200, kAdHoc, kWritten},
          {"channel=-6", "wireless.mode=1", 400, "", ""},
          {"activekey=1&chpatterns=&format=%00&keylength=1&key2=%ff&key3=x&key4=y", "", 200, kManaged, ""},
      });
  int region = 0;
  for (const std::string pattern : {"11111111111", "1111111111111", "00000000011", "0000000001111",
                                    "00000000000001", "11111111111111", "001111111", "0000111111111", ""}) {
    scripted().reset();
    scripted().productInfo = "region = " + std::to_string(region++);
    const Reply reply = request("wireless.cgi", "");
    EXPECT_NE(reply.body.find(" chpatterns=" + pattern + " channel=1 "), std::string::npos) << reply.body;
    for (std::size_t channel = 0; channel <= 16; ++channel) {
      const bool allowed = channel >= 1 && channel <= pattern.size() && pattern[channel - 1] == '1';
      EXPECT_EQ(request("wireless.cgi", "channel=" + std::to_string(channel)).status, allowed ? 200 : 400)
          << pattern << " " << channel;
    }
  }
}

TEST(Wireless, AnswersAsThePlatformDoes) {
  expectResults("wireless.cgi", kOpenNet,
                {{"get wireless", 1, "enable=off", 500, "get wireless"},
                 {"set wireless 1", 2, "enable=off", 500, "get wireless clean set wireless 1"}});
  scripted().reset();
  scripted().productFails = true;
  EXPECT_EQ(request("wireless.cgi", "enable=on").status, 500);
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
