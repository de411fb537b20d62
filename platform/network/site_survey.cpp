// Parsers of the driver's files: the wireless networks, and the signal.
#include "platform/network/site_survey.h"

#include <algorithm>

#include "platform/text.h"

namespace camera {
namespace {

bool parseSite(std::string_view line, Site* site) {
  if (std::count(line.begin(), line.end(), '\t') != 5) return false;
  return setText(site->ssid, takeUntil('\t', &line)) && setText(site->encryption, takeUntil('\t', &line)) &&
         setText(site->auth, takeUntil('\t', &line)) && setText(site->network_type, takeUntil('\t', &line)) &&
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
