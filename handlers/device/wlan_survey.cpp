// wlansurvey.cgi: the wireless networks in range.
#include <algorithm>
#include <iterator>
#include <string_view>

#include "handlers/endpoint.h"
#include "platform/network/site_survey.h"
#include "platform/text.h"

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

constexpr std::string_view kSurveyedEncryptions[] = {"NONE", "WEP", "AES", "TKIP"};
constexpr const char* kEncryptionWords[] = {"none", "WEP", "AES", "TKIP"};

// Returns null for a network that is left out.
const char* authWord(const Site& site) {
  const std::string_view auth = textOf(site.auth);
  for (const AuthWord& row : kAuthWords) {
    if (row.auth == auth && (row.encryption.empty() || row.encryption == textOf(site.encryption)))
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
      const auto* surveyed = std::find(std::begin(kSurveyedEncryptions), std::end(kSurveyedEncryptions),
                                       textOf(site.encryption));
      if (*site.ssid == '\0' || auth == nullptr || surveyed == std::end(kSurveyedEncryptions)) continue;
      const char* encryption = kEncryptionWords[surveyed - kSurveyedEncryptions];
      if (!isJson()) {
        replySite(site, auth, encryption, &fullReply());
        continue;
      }
      Reply network;
      network.useJson();
      replySite(site, auth, encryption, &network);
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

constexpr const char* kModeWords[] = {"infrastructure", "Ad-hoc"};
constexpr const char* kShownAuths[] = {"open", "shared", "WPA-PSK", "WPA2-PSK"};
constexpr ApiKey kNetwork[] = {
    {"ssid", ApiType::kText, "The network's name; several networks may have the same."},
    {"signal", ApiType::kNumber, "Its quality in percent: 100 from -50 dBm up, 0 at -90 dBm and below."},
    {"mode", ApiType::kText, "An access point, or other stations directly.", kModeWords},
    {"channel", ApiType::kNumber, "The number of its channel."},
    {"auth", ApiType::kText, "Its authentication, as wireless.cgi accepts it.", kShownAuths},
    {"encryption", ApiType::kText, "Its encryption, as wireless.cgi accepts it.", kEncryptionWords}};
template <>
const Api kApi<WlanSurveyEndpoint> = {
    .subsystem = Subsystem::kNetwork,
    .summary = "The wireless networks that the camera receives and can join.",
    .feature = &ProductInfo::wireless,
    .reply = {{"networks",
               ApiType::kObjects,
               "The networks, in the order of the survey. Text has no such line, but the six lines of each "
               "network.",
               {},
               kNetwork}}};
template struct EndpointOf<WlanSurveyEndpoint>;

}  // namespace camera
