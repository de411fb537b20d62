// wlansurvey.cgi: the wireless networks in range.
#include <string_view>

#include "handlers/endpoint.h"
#include "platform/network/site_survey.h"

namespace camera {
namespace {

// Words of the survey and of the reply. A network with other words is left out, because the camera cannot
// join it.
struct AuthWord {
  std::string_view auth;
  std::string_view encryption;  // empty: any
  const char* word;
};
constexpr AuthWord kAuthWords[] = {
    {"OPEN", "NONE", "open"},   {"OPEN", "WEP", "open"},      {"SHARED", "WEP", "shared"},
    {"WPA-PSK", "", "WPA-PSK"}, {"WPA2-PSK", "", "WPA2-PSK"},
};

constexpr const char* kSurveyedEncryptions[] = {"NONE", "WEP", "AES", "TKIP"};
constexpr const char* kEncryptionWords[] = {"none", "WEP", "AES", "TKIP"};

// Returns null for a network that is left out.
const char* authWord(const Site& site) {
  for (const AuthWord& row : kAuthWords) {
    if (row.auth == site.auth && (row.encryption.empty() || row.encryption == site.encryption))
      return row.word;
  }
  return nullptr;
}

// Converts a signal in dBm to percent.
int quality(int rssi) {
  if (rssi >= -50) return 100;
  if (rssi >= -80) return (26 * rssi + 2080) / 10 + 24;
  if (rssi >= -90) return (26 * rssi + 2340) / 10;
  return 0;
}

}  // namespace

class WlanSurveyEndpoint final : public ReadOnlyEndpoint {
  int load() override { return require(&ProductInfo::wireless); }

  int reply() override {
    JsonArray networks;
    for (const Site& site : surveySites()) {
      const char* auth = authWord(site);
      const int encryption = indexOf(site.encryption, kSurveyedEncryptions);
      if (*site.ssid == '\0' || auth == nullptr || encryption < 0) continue;
      Reply network;
      if (isJson()) network.useJson();
      replySite(site, auth, kEncryptionWords[encryption], isJson() ? &network : &fullReply());
      networks.add(network.json());
    }
    if (isJson()) value("networks", networks.text());
    return 200;
  }

  static void replySite(const Site& site, const char* auth, const char* encryption, Reply* reply) {
    reply->pair("ssid", site.ssid);
    reply->pair("signal", quality(site.rssi));
    reply->pair("mode", std::string_view{site.network_type} == "Infra" ? "infrastructure" : "Ad-hoc");
    reply->pair("channel", site.channel);
    reply->pair("auth", auth);
    reply->pair("encryption", encryption);
  }
};

template struct EndpointOf<WlanSurveyEndpoint>;

}  // namespace camera
