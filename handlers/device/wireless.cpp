// wireless.cgi: the wireless LAN client.
#include <optional>

#include "handlers/device/wireless_keys.h"
#include "handlers/endpoint.h"
#include "platform/store/records/wireless.h"

namespace camera {
namespace {

enum Mode : std::uint8_t { kManaged = 0, kAdHoc = 1 };
enum Auth : std::uint8_t { kOpen = 0, kShared = 1, kWpaPsk = 2, kWpa2Psk = 5, kOpenOrShared = 6 };
enum Encryption : std::uint8_t { kNone = 0, kWep = 1, kTkip = 2, kAes = 3 };

constexpr const char* kModeWords[] = {"managed", "ad-hoc"};
constexpr const char* kAuthWords[] = {"open", "shared", "WPA-PSK", "", "", "WPA2-PSK", "open"};
constexpr const char* kEncryptionWords[] = {"none", "WEP", "TKIP", "AES"};

// The words that a request may give; replies show kOpenOrShared as open.
constexpr Words kAuthChoices = Words{kAuthWords}.first(kOpenOrShared);

// By region; the i-th character, counted from 1, is "1" if channel i is allowed.
constexpr std::string_view kChannelPatterns[] = {
    "11111111111",    "1111111111111",  "00000000011", "0000000001111",
    "00000000000001", "11111111111111", "001111111",   "0000111111111",
};
constexpr int kMostChannels = 14;

// Empty for an unknown region: no channel is allowed there.
std::string_view channelPattern(int region) {
  const auto index = static_cast<std::size_t>(region);
  return index < std::size(kChannelPatterns) ? kChannelPatterns[index] : std::string_view{};
}

bool isWpa(int auth) {
  return auth == kWpaPsk || auth == kWpa2Psk;
}

bool isWpaCipher(int encryption) {
  return encryption == kTkip || encryption == kAes;
}

// A given value and the stored one.
struct Choice {
  int given;  // -1: not given
  int stored;
  bool isGiven() const { return given >= 0; }
  int effective() const { return isGiven() ? given : stored; }
};

// The values that must fit together.
struct Combination {
  Choice mode;
  Choice auth;
  Choice encryption;
  std::optional<std::string_view> key1;  // as given
  std::optional<std::string_view> passphrase;
  std::string_view storedKey;
};

bool modeFits(const Combination& c) {
  return c.mode.given != kAdHoc || !(isWpa(c.auth.effective()) || isWpaCipher(c.encryption.effective()));
}

bool authFits(const Combination& c) {
  if (!c.auth.isGiven()) return true;
  const int cipher = c.encryption.effective();
  if (isWpa(c.auth.given)) {
    const bool hasKey = c.passphrase || !c.storedKey.empty();
    return c.mode.effective() != kAdHoc && isWpaCipher(cipher) && hasKey;
  }
  if (cipher == kWep) return !c.key1.value_or(c.storedKey).empty();
  return cipher == kNone && c.auth.given != kShared;
}

bool encryptionFits(const Combination& c) {
  if (!c.encryption.isGiven()) return true;
  const int cipher = c.encryption.given;
  if (!c.auth.isGiven()) {
    if (isWpaCipher(cipher) != isWpa(c.auth.stored)) return false;
    if (cipher == kNone && c.auth.stored == kShared) return false;
  }
  if (cipher == kWep) return c.key1 ? !c.key1->empty() : isWepKey(c.storedKey);
  if (!isWpaCipher(cipher)) return true;
  return c.mode.effective() != kAdHoc && (c.passphrase || isWpaKey(c.storedKey));
}

// An empty value must not delete the key of the encryption in use.
bool keysFit(const Combination& c) {
  const int cipher = c.encryption.effective();
  const bool dropsWep = cipher == kWep && c.key1 && c.key1->empty();
  const bool dropsWpa = isWpaCipher(cipher) && c.passphrase && c.passphrase->empty();
  return !dropsWep && !dropsWpa;
}

// The record, and the parameters that merge() stores only under conditions; activeKey is only checked.
struct Wanted {
  WirelessSettings record;
  std::int32_t channel = -1;  // -1: not given
  std::int32_t auth = -1;
  std::int32_t activeKey = 1;
  std::string_view key1{};
  std::string_view passphrase{};
};

constexpr char kWepKey[] = "5 or 13 printable ASCII characters, or 10 or 26 hexadecimal digits";
constexpr char kWpaKey[] = "8 to 63 printable ASCII characters, or 64 hexadecimal digits";

constexpr auto kParams = paramRows<Wanted>(
    choiceParam<&Wanted::record, &WirelessSettings::enable>("enable", kOffOn),
    choiceParam<&Wanted::record, &WirelessSettings::mode>("mode", kModeWords),
    textParam<&Wanted::record, &WirelessSettings::essid>("essid", kPrintableText),
    integerParam<&Wanted::channel>("channel", 1, kMostChannels),
    choiceParam<&Wanted::auth>("auth", kAuthChoices),
    choiceParam<&Wanted::record, &WirelessSettings::encryption>("encryption", kEncryptionWords),
    integerParam<&Wanted::activeKey>("activekey", 1, 1),  // the camera stores only the first of four keys
    textParam<&Wanted::key1>("key1", 0, 26, kPrintableText).also(isWepKey, kWepKey).secret(),
    textParam<&Wanted::passphrase>("passphrase", 0, 64, kPrintableText).also(isWpaKey, kWpaKey).secret(),
    ignoredParam("chpatterns"), ignoredParam("format"), ignoredParam("keylength"), ignoredParam("key2"),
    ignoredParam("key3"), ignoredParam("key4"));

// The enumeration of the channels that the region allows; in an unknown region, no channel is accepted.
std::string channelSchema(const ProductInfo& product) {
  const std::string_view pattern = channelPattern(product.region);
  JsonArray channels;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '1') channels.add(Decimal(static_cast<std::int64_t>(i) + 1).text());
  }
  return channels.empty() ? R"("type":"integer","not":{})"
                          : joined({R"("type":"integer","enum":)", channels.text()});
}

std::string schemaOf(std::string_view param, const ProductInfo& product) {
  if (param == "channel") return channelSchema(product);
  if (param == "key1")
    return R"("type":"string","pattern":"^([ -~]{5}|[ -~]{13}|[0-9A-Fa-f]{10}|[0-9A-Fa-f]{26})?$")";
  return param == "passphrase" ? R"("type":"string","pattern":"^([ -~]{8,63}|[0-9A-Fa-f]{64})?$")" : "";
}

}  // namespace

class WirelessEndpoint final : public ParamEndpoint<kParams> {
  int load() override {
    const ProductInfo* info = product();
    if (info == nullptr) return 500;
    channels_ = channelPattern(info->region);
    return read(wireless_);
  }

  int apply() override {
    Wanted wanted{.record = wireless_};
    if (take(&wanted) != 200) return 400;
    if (!channelFits(wanted.channel)) return refuse("channel", "one that chpatterns marks with 1");
    if (given("auth") && *kAuthWords[wanted.auth] == '\0') return refuse("auth");
    const Combination c = combination(wanted);
    if (!modeFits(c)) return refuse("mode", "ad-hoc cannot be used with WPA, TKIP or AES");
    if (!authFits(c)) return refuse("auth", "does not fit the mode, the encryption or the key");
    if (!encryptionFits(c)) return refuse("encryption", "does not fit the mode, auth or the key");
    if (!keysFit(c))
      return refuse(c.encryption.effective() == kWep ? "key1" : "passphrase", "needed with this encryption");
    merge(c, &wanted);
    writeChanged(wireless_, wanted.record);
    const int result = commit();
    if (result == 200) wireless_ = wanted.record;
    return result;
  }

  int reply() override {
    pair("enable", kOffOn[wireless_.enable]);
    pair("mode", kModeWords[wireless_.mode]);
    pair("essid", wireless_.essid);
    pair("chpatterns", std::string{channels_});
    pair("channel", wireless_.channel);
    pair("auth", kAuthWords[wireless_.auth]);
    pair("encryption", kEncryptionWords[wireless_.encryption]);
    if (wireless_.encryption == kWep) replyWepKey();
    if (isWpa(wireless_.auth)) pair("passphrase", wireless_.key);
    return 200;
  }

  bool channelFits(std::int32_t channel) const {
    if (channel < 0) return true;
    const auto number = static_cast<std::size_t>(channel);
    return number <= channels_.size() && channels_[number - 1] == '1';
  }

  std::optional<std::string_view> givenText(Param param, std::string_view text) const {
    if (!given(param)) return std::nullopt;
    return text;
  }

  Combination combination(const Wanted& wanted) const {
    const auto choice = [this](Param param, int value, std::uint8_t stored) {
      return Choice{.given = given(param) ? value : -1, .stored = stored};
    };
    return {.mode = choice("mode", wanted.record.mode, wireless_.mode),
            .auth = choice("auth", wanted.auth, wireless_.auth),
            .encryption = choice("encryption", wanted.record.encryption, wireless_.encryption),
            .key1 = givenText("key1", wanted.key1),
            .passphrase = givenText("passphrase", wanted.passphrase),
            .storedKey = wireless_.key};
  }

  void merge(const Combination& c, Wanted* wanted) {
    WirelessSettings& record = wanted->record;
    const int cipher = c.encryption.effective();
    // Without auth, a stored kOpenOrShared stays even with encryption none; replies show it as open.
    if (c.auth.isGiven()) {
      record.auth =
          static_cast<std::uint8_t>(cipher == kWep ? static_cast<int>(kOpenOrShared) : c.auth.given);
    }
    if (wanted->channel >= 0 && c.mode.effective() == kAdHoc) record.channel = wanted->channel;
    // With encryption none, a key is stored for later use. If both are given, the passphrase is stored.
    const bool takesKey1 = !isWpaCipher(cipher);
    const bool takesPassphrase = cipher != kWep;
    if (c.key1 && takesKey1) setText(record.key, *c.key1);
    if (c.passphrase && takesPassphrase) setText(record.key, *c.passphrase);
    if (c.mode.effective() != kAdHoc) noteIgnored("channel");
    if (!takesKey1 || (c.passphrase && takesPassphrase)) noteIgnored("key1");
    if (!takesPassphrase) noteIgnored("passphrase");
  }

  void replyWepKey() {
    if (const WepFormat* format = wepFormat(wireless_.key); format != nullptr) {
      pair("format", format->isHex ? "hex" : "ASCII");
      pair("keylength", format->bits);
    }
    pair("activekey", 1);
    pair("key1", wireless_.key);
  }

  WirelessSettings wireless_;
  std::string_view channels_;
};

constexpr const char* kFormatWords[] = {"hex", "ASCII"};
template <>
const Api kApi<WirelessEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kNetwork,
     .summary = "The wireless LAN client: whether it is on, and which network it joins.",
     .records = "`wireless`",
     .dependent = "mode auth encryption key1 passphrase",
     .params = {{"enable", "Switches the client."},
                {"mode", "Joins an access point, or other stations directly."},
                {"essid", "The network's name.", nullptr, "Camera Net"},
                {"channel", "Stored if the mode is or becomes `ad-hoc`; otherwise only checked.", nullptr,
                 nullptr, "a channel whose digit in `chpatterns` is 1"},
                {"auth", "The authentication; it must fit the mode, the encryption and the key."},
                {"encryption", "The encryption; it must fit the mode, the authentication and the key."},
                {"activekey", "Has no effect: the camera has one WEP key."},
                {"key1", "The WEP key; stored if the encryption is `none` or `WEP`.", nullptr, "wired",
                 "empty; 5 or 13 printable ASCII characters; 10 or 26 hexadecimal digits"},
                {"passphrase", "The WPA key; stored if the encryption is `none`, `TKIP` or `AES`.", nullptr,
                 "correct horse", "empty; 8 to 63 printable ASCII characters; 64 hexadecimal digits"}},
     .reply = {{"enable"},
               {"mode"},
               {"essid"},
               {"chpatterns", ApiType::kText,
                "The channels of the camera's region: digit i is 1 if channel i is allowed; empty if the "
                "region is unknown."},
               {"channel", ApiType::kNumber, "The channel, which the client uses in `ad-hoc` mode."},
               {"auth"},
               {"encryption"},
               {.name = "format",
                .type = ApiType::kText,
                .meaning = "How the WEP key is written; missing without `WEP`, and if the key has none of "
                           "the four lengths.",
                .words = kFormatWords,
                .isOptional = true},
               {.name = "keylength",
                .type = ApiType::kNumber,
                .meaning = "The length of the WEP key in bits, 64 or 128; missing if `format` is.",
                .isOptional = true},
               {.name = "activekey",
                .type = ApiType::kNumber,
                .meaning = "The number of the WEP key in use, always 1; missing without `WEP`.",
                .isOptional = true},
               {.name = "key1",
                .type = ApiType::kText,
                .meaning = "The WEP key; missing without `WEP`.",
                .isOptional = true},
               {.name = "passphrase",
                .type = ApiType::kText,
                .meaning = "The WPA key; missing without `WPA-PSK` or `WPA2-PSK`.",
                .isOptional = true}},
     .state = [](const ProductInfo&) -> const void* {
       static Wanted state;
       state.channel = state.record.channel;
       state.auth = state.record.auth;
       return &state;
     },
     .schema = schemaOf});
template struct EndpointOf<WirelessEndpoint>;

}  // namespace camera
