// wireless.cgi: its values and channels, and every combination of mode, authentication, encryption and key.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>

#include "platform/records/wireless.h"
#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kWritten[] = "clean set wireless 1 work wireless";
constexpr char kOpenNet[] =
    "wireless.enable=1 wireless.mode=0 wireless.auth=0 wireless.encryption=0 wireless.essid=Net "
    "wireless.channel=1 wireless.key=";

struct Accepted {
  std::string query;
  std::string reply;  // from "auth" on, or whole
};

TEST(Wireless, ChecksEachValue) {
  const std::string hex64 = "0123456789abcdefABCDEF0123456789abcdefABCDEF0123456789abcdefABCD";
  const std::string hex26 = hex64.substr(0, 26);
  const std::string hex63 = hex64.substr(1);
  const std::string wpa = "auth=WPA2-PSK&encryption=AES&passphrase=";
  const std::string wep = "auth=shared&encryption=WEP&key1=";
  const std::string wpaReply = "auth=WPA2-PSK encryption=AES passphrase=";
  const std::string wepReply = "auth=open encryption=WEP format=";
  const std::string punctuation = R"(!"#$%&'()*+,-./:;<=>?@[\]^_`{|}~)";
  const std::string encoded = R"(!"%23$%25%26'()*%2B,-./:;<=>?@[\]^_`{|}~)";
  const std::string longest(32, 'n');
  const Accepted accepted[] = {
      {"essid=" + longest, "enable=on mode=managed essid=" + longest +
                               " chpatterns=11111111111 channel=1 auth=open encryption=none "},
      {wpa + "8 charac", wpaReply + "8 charac "},
      {wpa + "%20" + encoded, wpaReply + " " + punctuation + " "},
      {wpa + hex63, wpaReply + hex63 + " "},
      {wpa + hex64, wpaReply + hex64 + " "},
      {wep + "a+%7b%25x", wepReply + "ASCII keylength=64 activekey=1 key1=a {%x "},
      {wep + "012345abCD", wepReply + "hex keylength=64 activekey=1 key1=012345abCD "},
      {wep + "thirteen char", wepReply + "ASCII keylength=128 activekey=1 key1=thirteen char "},
      {wep + hex26, wepReply + "hex keylength=128 activekey=1 key1=" + hex26 + " "},
  };
  for (const Accepted& row : accepted) {
    scripted().reset();
    scripted().store(kOpenNet);
    const Reply reply = request("wireless.cgi", row.query);
    EXPECT_TRUE(reply.status == 200 && reply.body.ends_with(row.reply)) << row.query << " " << reply.body;
    EXPECT_EQ(scripted().writes(), kWritten) << row.query;
  }
  const std::string refused[] = {
      "activekey=2",
      "activekey=5",
      "key5=",
      "Enable=on",
      "enable=ON",
      "mode=adhoc",
      "auth=",  // the table of words has gaps
      "encryption=wep",
      "essid=",
      "essid=n" + longest,
      "essid=a%00",
      "essid=caf%C3%A9",
      wpa + "1234567",
      wpa + "1234567%00",
      wpa + "with%09tab",
      wpa + "g" + hex63,
      wpa + "0" + hex64,
      wep + "012345abCG",
      wep + "elevenchars",
      wep + "caf%C3%A9",
      "key1=four",
      "passphrase=short",  // checked where they are not used, too
  };
  for (const std::string& query : refused) {
    scripted().reset();
    scripted().store(kOpenNet);
    EXPECT_EQ(request("wireless.cgi", query).status, 400) << query;
    EXPECT_EQ(scripted().writes(), "") << query;
  }
}

TEST(Wireless, AppliesAChannelOfTheRegionInAdHocModeAlone) {
  constexpr char kManaged[] =
      "enable=on mode=managed essid=Net chpatterns=11111111111 channel=1 auth=open encryption=none ";
  constexpr char kAdHoc[] =
      "enable=on mode=ad-hoc essid=Net chpatterns=11111111111 channel=6 auth=open encryption=none ";
  constexpr char kStoredAdHoc[] = "wireless.mode=1";
  expectRows(
      "wireless.cgi", kOpenNet,
      {
          {"channel=6", "", 200, kManaged, ""},
          {"channel=6&mode=managed", kStoredAdHoc, 200, kManaged, kWritten},
          {"channel=6&mode=ad-hoc", "", 200, kAdHoc, kWritten},
          {"channel=6", kStoredAdHoc, 200, kAdHoc, kWritten},
          {"channel=12", kStoredAdHoc, 400, "", ""},
          {"channel=-6", kStoredAdHoc, 400, "", ""},
          {"channel=", kStoredAdHoc, 400, "", ""},
          {"channel=4294967302", kStoredAdHoc, 400, "", ""},
          {"activekey=1&chpatterns=&format=%00&keylength=1&key2=%ff&key3=x&key4=y", "", 200, kManaged, ""},
      });
  struct Region {
    const char* number;
    const char* pattern;
    std::vector<int> channels;
  };
  const Region regions[] = {
      {"0", "11111111111", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}},
      {"1", "1111111111111", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}},
      {"2", "00000000011", {10, 11}},
      {"3", "0000000001111", {10, 11, 12, 13}},
      {"4", "00000000000001", {14}},
      {"5", "11111111111111", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
      {"6", "001111111", {3, 4, 5, 6, 7, 8, 9}},
      {"7", "0000111111111", {5, 6, 7, 8, 9, 10, 11, 12, 13}},
      {"8", "", {}},
      {"2147483647", "", {}},
  };
  for (const Region& region : regions) {
    scripted().reset();
    scripted().productInfo = std::string{"region = "} + region.number;
    std::vector<int> channels;
    for (int channel = 0; channel <= 16; ++channel) {
      if (request("wireless.cgi", "channel=" + std::to_string(channel)).status == 200)
        channels.push_back(channel);
    }
    EXPECT_EQ(channels, region.channels) << "region " << region.number;
    const std::string body = request("wireless.cgi", "").body;
    EXPECT_NE(body.find(std::string{" chpatterns="} + region.pattern + " channel=1 "), body.npos) << body;
  }
}

TEST(Wireless, AnswersAsThePlatformDoes) {
  expectResults(
      "wireless.cgi", kOpenNet,
      {
          {"get wireless", 2, "", 500, "get wireless"},
          {"get wireless", 1, "enable=off", 500, "get wireless"},
          {"set wireless 1", 1, "enable=off", 400, "get wireless clean set wireless 1"},
          {"set wireless 1", 2, "enable=off", 500, "get wireless clean set wireless 1"},
          {"work wireless", 9, "enable=off", 200, "get wireless clean set wireless 1 work wireless"},
      });
  scripted().reset();
  scripted().productFails = true;
  EXPECT_EQ(request("wireless.cgi", "enable=on").status, 500);
  EXPECT_EQ(scripted().allCalls(), "");
}

// The rules between the values, one a line, against every combination.

struct Key {
  const char* text;
  bool isWep;
  bool isWpa;
};
constexpr Key kStoredKeys[] = {
    {"", false, false},
    {"w-e-p", true, false},
    {"a long passphrase", false, true},
};

using Word = std::string_view;
using Given = std::optional<Word>;

struct Combination {
  Word storedMode;
  Word storedAuth;
  Word storedEncryption;
  Key storedKey;
  Given mode;
  Given auth;
  Given encryption;
  Given key1;
  Given passphrase;

  Word effectiveMode() const { return mode.value_or(storedMode); }
  Word effectiveAuth() const { return auth.value_or(storedAuth); }
  Word effectiveEncryption() const { return encryption.value_or(storedEncryption); }
};
using C = const Combination&;

bool isOneOf(Given word, std::initializer_list<Word> words) {
  return word && std::find(words.begin(), words.end(), *word) != words.end();
}
bool isWpa(Given auth) {
  return isOneOf(auth, {"WPA-PSK", "WPA2-PSK"});
}
bool isOpenOrShared(Given auth) {
  return isOneOf(auth, {"open", "shared"});
}
bool isCipher(Given encryption) {
  return isOneOf(encryption, {"TKIP", "AES"});
}

struct Rule {
  const char* refused;
  bool (*when)(C);
};
constexpr Rule kRules[] = {
    {"ad-hoc with WPA", [](C c) { return c.mode == "ad-hoc" && isWpa(c.effectiveAuth()); }},
    {"ad-hoc with TKIP or AES", [](C c) { return c.mode == "ad-hoc" && isCipher(c.effectiveEncryption()); }},
    {"WPA in ad-hoc mode", [](C c) { return isWpa(c.auth) && c.effectiveMode() == "ad-hoc"; }},
    {"WPA with none or WEP",
     [](C c) {
       return isWpa(c.auth) && isOneOf(c.effectiveEncryption(), {"none", "WEP"});
     }},
    {"WPA without any key",
     [](C c) { return isWpa(c.auth) && !c.passphrase && c.storedKey.text == Word{""}; }},
    {"open or shared with TKIP or AES",
     [](C c) { return isOpenOrShared(c.auth) && isCipher(c.effectiveEncryption()); }},
    {"open or shared with WEP and the key given empty",
     [](C c) { return isOpenOrShared(c.auth) && c.effectiveEncryption() == "WEP" && c.key1 == ""; }},
    {"open or shared with WEP and no key",
     [](C c) {
       return isOpenOrShared(c.auth) && c.effectiveEncryption() == "WEP" && !c.key1 &&
              c.storedKey.text == Word{""};
     }},
    {"shared with none", [](C c) { return c.auth == "shared" && c.effectiveEncryption() == "none"; }},
    {"none or WEP on stored WPA",
     [](C c) {
       return isOneOf(c.encryption, {"none", "WEP"}) && !c.auth && isWpa(c.storedAuth);
     }},
    {"none on stored shared",
     [](C c) { return c.encryption == "none" && !c.auth && c.storedAuth == "shared"; }},
    {"TKIP or AES on other than stored WPA",
     [](C c) { return isCipher(c.encryption) && !c.auth && !isWpa(c.storedAuth); }},
    {"WEP with the key given empty", [](C c) { return c.encryption == "WEP" && c.key1 == ""; }},
    {"WEP on a stored key that is none",
     [](C c) { return c.encryption == "WEP" && !c.key1 && !c.storedKey.isWep; }},
    {"TKIP or AES in ad-hoc mode",
     [](C c) { return isCipher(c.encryption) && c.effectiveMode() == "ad-hoc"; }},
    {"TKIP or AES on a stored key that is none",
     [](C c) { return isCipher(c.encryption) && !c.passphrase && !c.storedKey.isWpa; }},
    {"the WEP key taken away", [](C c) { return c.effectiveEncryption() == "WEP" && c.key1 == ""; }},
    {"the passphrase taken away",
     [](C c) { return isCipher(c.effectiveEncryption()) && c.passphrase == ""; }},
};

// What an accepted combination leaves: the last merge that applies, or what was stored.
Word authLeft(C c) {
  if (isOpenOrShared(c.auth) && c.effectiveEncryption() == "WEP") return "open or shared";
  return c.effectiveAuth();
}
Word keyLeft(C c) {
  if (c.passphrase && c.effectiveEncryption() != "WEP") return *c.passphrase;
  if (c.key1 && isOneOf(c.effectiveEncryption(), {"none", "WEP"})) return *c.key1;
  return c.storedKey.text;
}

constexpr Word kModes[] = {"managed", "ad-hoc"};
constexpr Word kAuths[] = {"open", "shared", "WPA-PSK", "", "", "WPA2-PSK", "open or shared"};
constexpr Word kEncryptions[] = {"none", "WEP", "TKIP", "AES"};

template <std::size_t N>
std::uint8_t numberOf(Word word, const Word (&words)[N]) {
  return static_cast<std::uint8_t>(std::find(words, words + N, word) - words);
}

_wireless_setting record(Word mode, Word auth, Word encryption, Word key) {
  _wireless_setting wireless{.enable = 1,
                             .mode = numberOf(mode, kModes),
                             .auth = numberOf(auth, kAuths),
                             .encryption = numberOf(encryption, kEncryptions),
                             .channel = 5,
                             .essid = "Net",
                             .key = ""};
  key.copy(wireless.key, sizeof wireless.key - 1);
  return wireless;
}

std::string queryOf(C c) {
  std::string query;
  const auto add = [&query](const char* name, Given value) {
    if (value) query += (query.empty() ? "" : "&") + std::string{name} + "=" + std::string{*value};
  };
  add("mode", c.mode);
  add("auth", c.auth);
  add("encryption", c.encryption);
  add("key1", c.key1);
  add("passphrase", c.passphrase);
  return query;
}

std::string describe(C c, const char* refusedFor) {
  std::string text = "stored " + std::string{c.storedMode} + ", " + std::string{c.storedAuth} + ", " +
                     std::string{c.storedEncryption} + ", key '" + c.storedKey.text + "'; given " +
                     queryOf(c);
  return text + (refusedFor == nullptr ? "; to be accepted" : std::string{"; to be refused: "} + refusedFor);
}

// Empty when the endpoint does as the rules say.
std::string verdict(C c) {
  std::vector<std::uint8_t>& store = scripted().records[static_cast<std::size_t>(RecordIndex::wireless)];
  const auto holds = [&store](const _wireless_setting& wireless) {
    return std::memcmp(store.data(), &wireless, sizeof wireless) == 0;
  };
  const _wireless_setting before = record(c.storedMode, c.storedAuth, c.storedEncryption, c.storedKey.text);
  std::memcpy(store.data(), &before, sizeof before);
  const Rule* rule =
      std::find_if(std::begin(kRules), std::end(kRules), [&](const Rule& r) { return r.when(c); });
  const Reply reply = request("wireless.cgi", queryOf(c));
  if (rule != std::end(kRules)) {
    return reply.status == 400 && holds(before) ? "" : describe(c, rule->refused);
  }
  const bool stored = holds(record(c.effectiveMode(), authLeft(c), c.effectiveEncryption(), keyLeft(c)));
  const bool readsBack = request("wireless.cgi", "").body == reply.body;
  return reply.status == 200 && stored && readsBack ? "" : describe(c, nullptr) + "; answered " + reply.body;
}

TEST(Wireless, AcceptsACombinationExactlyWhenNoRuleRefusesIt) {
  const Given kModesGiven[] = {std::nullopt, "managed", "ad-hoc"};
  const Given kAuthsGiven[] = {std::nullopt, "open", "shared", "WPA-PSK", "WPA2-PSK"};
  const Given kEncryptionsGiven[] = {std::nullopt, "none", "WEP", "TKIP", "AES"};
  const std::pair<Given, Given> kKeysGiven[] = {{std::nullopt, std::nullopt}, {"abcde", std::nullopt},
                                                {"", std::nullopt},           {std::nullopt, "passphrase"},
                                                {std::nullopt, ""},           {"abcde", "passphrase"}};
  scripted().reset();
  int failures = 0;
  int combinations = 0;
  const auto check = [&](C c) {
    scripted().calls.clear();
    const std::string failure = verdict(c);
    ++combinations;
    if (!failure.empty() && ++failures <= 10) ADD_FAILURE() << failure;
  };
  for (const Word mode : kModes)
    for (const Word auth : {"open", "shared", "WPA-PSK", "WPA2-PSK", "open or shared"})
      for (const Word encryption : kEncryptions)
        for (const Key& key : kStoredKeys)
          for (const Given& newMode : kModesGiven)
            for (const Given& newAuth : kAuthsGiven)
              for (const Given& newEncryption : kEncryptionsGiven)
                for (const auto& [key1, passphrase] : kKeysGiven)
                  check({mode, auth, encryption, key, newMode, newAuth, newEncryption, key1, passphrase});
  EXPECT_EQ(failures, 0) << "of " << combinations;
}

}  // namespace
}  // namespace camera::test
