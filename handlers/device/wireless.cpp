// wireless.cgi: the wireless LAN client.
#include <optional>

#include "framework/param_table.h"
#include "handlers/device/wireless_keys.h"
#include "handlers/product.h"
#include "handlers/transaction.h"
#include "platform/store/records/wireless.h"

namespace {

enum Mode : std::uint8_t { kManaged = 0, kAdHoc = 1 };
enum Auth : std::uint8_t { kOpen = 0, kShared = 1, kWpaPsk = 2, kWpa2Psk = 5, kOpenOrShared = 6 };
enum Encryption : std::uint8_t { kNone = 0, kWep = 1, kTkip = 2, kAes = 3 };

constexpr const char* kModeWords[] = {"managed", "ad-hoc"};
constexpr const char* kAuthWords[] = {"open", "shared", "WPA-PSK", "", "", "WPA2-PSK", "open"};
constexpr const char* kEncryptionWords[] = {"none", "WEP", "TKIP", "AES"};

// What a request can choose: clients know open and shared, not the state that tries both.
constexpr camera::Words kAuthChoices = camera::Words{kAuthWords}.first(kOpenOrShared);

// By region; the i-th character, counted from 1, is "1" where channel i may be used.
constexpr std::string_view kChannelPatterns[] = {
    "11111111111",    "1111111111111",  "00000000011", "0000000001111",
    "00000000000001", "11111111111111", "001111111",   "0000111111111",
};
constexpr int kMostChannels = 14;

// In a region that is not known no channel is known to be allowed.
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

// A value that the request may give, and the one it would replace.
struct Choice {
  int given;  // -1: not given
  int stored;
  bool isGiven() const { return given >= 0; }
  int effective() const { return isGiven() ? given : stored; }
};

// Everything on which it depends whether the client could use the settings.
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
  if (cipher == kWep) return c.key1 ? !c.key1->empty() : camera::checkWepKey(c.storedKey) == 0;
  if (!isWpaCipher(cipher)) return true;
  return c.mode.effective() != kAdHoc && (c.passphrase || camera::checkWpaKey(c.storedKey) == 0);
}

// A key in use cannot be taken away.
bool keysFit(const Combination& c) {
  const int cipher = c.encryption.effective();
  const bool dropsWep = cipher == kWep && c.key1 && c.key1->empty();
  const bool dropsWpa = isWpaCipher(cipher) && c.passphrase && c.passphrase->empty();
  return !dropsWep && !dropsWpa;
}

camera::ParamRow ignoredParam(const char* name) {
  return {.name = name, .kind = kUnhandledParam};
}

}  // namespace

class WirelessCgilet final : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    PIB product;
    if (!camera::readProduct(product)) return;
    channels_ = channelPattern(product.getRegion());
    if (cam_get_wireless(&wireless_) == 0) status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    if (!params_.check(*this) || !channelFits() || !authIsNamed()) return;
    const Combination wanted = combination();
    if (!modeFits(wanted) || !authFits(wanted) || !encryptionFits(wanted) || !keysFit(wanted)) return;
    merge(wanted);
    status = changed_ ? camera::store(cam_set_wireless, wireless_, 1) : 200;
  }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    pair("enable", camera::kOffOn[wireless_.enable]);
    pair("mode", kModeWords[wireless_.mode]);
    pair("essid", wireless_.essid);
    pair("chpatterns", std::string{channels_});
    pair("channel", wireless_.channel);
    pair("auth", kAuthWords[wireless_.auth]);
    pair("encryption", kEncryptionWords[wireless_.encryption]);
    if (wireless_.encryption == kWep) replyWepKey();
    if (isWpa(wireless_.auth)) pair("passphrase", wireless_.key);
    infOK();
  }

 private:
  bool channelFits() const {
    if (!params_.given("channel")) return true;
    const auto channel = static_cast<std::size_t>(params_.integer("channel"));
    return channel <= channels_.size() && channels_[channel - 1] == '1';
  }

  // An empty text matches the table's gaps.
  bool authIsNamed() const { return !params_.given("auth") || *kAuthWords[params_.choice("auth")] != '\0'; }

  Choice choice(const char* name, std::uint8_t stored) const {
    return {.given = params_.given(name) ? params_.choice(name) : -1, .stored = stored};
  }

  std::optional<std::string_view> givenText(const char* name) const {
    if (!params_.given(name)) return std::nullopt;
    return params_.text(name);
  }

  Combination combination() const {
    return {.mode = choice("mode", wireless_.mode),
            .auth = choice("auth", wireless_.auth),
            .encryption = choice("encryption", wireless_.encryption),
            .key1 = givenText("key1"),
            .passphrase = givenText("passphrase"),
            .storedKey = wireless_.key};
  }

  void merge(const Combination& wanted) {
    const int cipher = wanted.encryption.effective();
    const bool tryBoth = cipher == kWep && wanted.auth.isGiven();
    params_.merge();
    CommonAPI::CmpIdx(tryBoth ? kOpenOrShared : wanted.auth.given, &wireless_.auth, &changed_);
    if (params_.given("channel") && wanted.mode.effective() == kAdHoc) {
      CommonAPI::CmpInt(params_.integer("channel"), &wireless_.channel, &changed_);
    }
    // Without encryption either may be laid down for later; of both, the passphrase stays.
    if (!isWpaCipher(cipher)) replaceKey("key1");
    if (cipher != kWep) replaceKey("passphrase");
  }

  void replaceKey(const char* name) {
    if (params_.given(name)) CommonAPI::CmpStr(params_.text(name), 1, wireless_.key, &changed_);
  }

  void replyWepKey() {
    if (const camera::WepFormat* format = camera::wepFormat(wireless_.key); format != nullptr) {
      pair("format", format->isHex ? "hex" : "ASCII");
      pair("keylength", format->bits);
    }
    pair("activekey", 1);
    pair("key1", wireless_.key);
  }

  _wireless_setting wireless_;
  std::string_view channels_;
  bool changed_ = false;
  camera::ParamTable params_{{
      camera::choiceParam("enable", camera::kOffOn).into(wireless_.enable, changed_),
      camera::choiceParam("mode", kModeWords).into(wireless_.mode, changed_),
      camera::textParam("essid", 1, 32, camera::kPrintableText).into(wireless_.essid, changed_),
      camera::integerParam("channel", 1, kMostChannels),
      camera::choiceParam("auth", kAuthChoices),
      camera::choiceParam("encryption", kEncryptionWords).into(wireless_.encryption, changed_),
      camera::integerParam("activekey", 1, 1),  // clients know four keys, the camera has the first
      camera::textParam("key1", 0, 26, camera::kPrintableText).also(camera::checkWepKey),
      camera::textParam("passphrase", 0, 64, camera::kPrintableText).also(camera::checkWpaKey),
      ignoredParam("chpatterns"),
      ignoredParam("format"),
      ignoredParam("keylength"),
      ignoredParam("key2"),
      ignoredParam("key3"),
      ignoredParam("key4"),
  }};
};

template InfCgilet* camera::create<WirelessCgilet>();
