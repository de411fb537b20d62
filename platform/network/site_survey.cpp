// Parsers of the driver's files: the wireless networks, and the signal.
#include "platform/network/site_survey.h"

#include "platform/text.h"

namespace camera {
namespace {

bool parseSite(std::string_view line, Site* site) {
  const auto take = [&line](auto& field) { return copyText(field, sizeof field, takeUntil('\t', &line)); };
  return take(site->ssid) && take(site->encryption) && take(site->auth) && take(site->network_type) &&
         readNumber(takeUntil('\t', &line), &site->channel) && readNumber(line, &site->rssi);
}

}  // namespace

std::vector<Site> parseSites(std::string_view text) {
  std::vector<Site> sites;
  while (!text.empty()) {
    Site site{};
    if (parseSite(takeUntil('\n', &text), &site)) sites.push_back(site);
  }
  return sites;
}

int parseRssi(std::string_view text) {
  std::int32_t rssi = 0;
  return readNumber(takeUntil('\n', &text), &rssi) && text.empty() ? rssi : 0;
}

}  // namespace camera
