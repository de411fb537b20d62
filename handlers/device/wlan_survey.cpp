// wlansurvey.cgi: the wireless networks that the camera can hear.
#include <string_view>

#include "handlers/endpoint.h"
#include "platform/network/site_survey.h"

namespace camera {
namespace {

// The survey's words and the reply's. A network whose words are not here is one that the camera cannot join.
struct AuthWord {
  std::string_view auth;
  std::string_view encryption;  // empty: any
  const char* word;
};
constexpr AuthWord kAuthWords[] = {
    {"OPEN", "NONE", "open"},   {"OPEN", "WEP", "open"},      {"SHARED", "WEP", "shared"},
    {"WPA-PSK", "", "WPA-PSK"}, {"WPA2-PSK", "", "WPA2-PSK"},
};

struct EncryptionWord {
  std::string_view encryption;
  const char* word;
};
constexpr EncryptionWord kEncryptionWords[] = {
    {"NONE", "none"}, {"WEP", "WEP"}, {"AES", "AES"}, {"TKIP", "TKIP"}};

// Null for a network that is not listed.
const char* authWord(const Site& site) {
  for (const AuthWord& row : kAuthWords) {
    if (row.auth == site.auth && (row.encryption.empty() || row.encryption == site.encryption))
      return row.word;
  }
  return nullptr;
}

const char* encryptionWord(const Site& site) {
  for (const EncryptionWord& row : kEncryptionWords) {
    if (row.encryption == site.encryption) return row.word;
  }
  return nullptr;
}

// Percent of a signal in dBm.
int quality(int rssi) {
  if (rssi >= -50) return 100;
  if (rssi >= -80) return (26 * rssi + 2080) / 10 + 24;
  if (rssi >= -90) return (26 * rssi + 2340) / 10;
  return 0;
}

}  // namespace

class WlanSurveyEndpoint final : public ReadOnlyEndpoint {
  int load() override {
    const ProductInfo* known = product();
    if (known == nullptr) return 500;
    return known->wireless ? 200 : fail(404, "this camera has no wireless client");
  }

  int reply() override {
    for (const Site& site : surveySites()) replySite(site);
    return 200;
  }

  void replySite(const Site& site) {
    const char* auth = authWord(site);
    const char* encryption = encryptionWord(site);
    if (*site.ssid == '\0' || auth == nullptr || encryption == nullptr) return;
    pair("ssid", site.ssid);
    pair("signal", quality(site.rssi));
    pair("mode", std::string_view{site.network_type} == "Infra" ? "infrastructure" : "Ad-hoc");
    pair("channel", site.channel);
    pair("auth", auth);
    pair("encryption", encryption);
  }
};

template void serve<WlanSurveyEndpoint>();

}  // namespace camera
