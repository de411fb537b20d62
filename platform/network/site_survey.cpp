// The wireless networks and the signal: what the texts of the driver's files tell.
#include "platform/network/site_survey.h"

#include <algorithm>

#include "platform/text.h"

namespace {

using camera::readNumber;
using camera::takeUntil;

// False for a text that the field cannot hold.
template <std::size_t N>
bool readText(std::string_view text, char (&field)[N]) {
  if (text.size() >= N || text.find('\0') != text.npos) return false;
  *std::copy(text.begin(), text.end(), field) = '\0';
  return true;
}

bool readSite(std::string_view line, sitelist* site) {
  if (std::count(line.begin(), line.end(), '\t') != 5) return false;
  return readText(takeUntil('\t', &line), site->ssid) && readText(takeUntil('\t', &line), site->encryption) &&
         readText(takeUntil('\t', &line), site->auth) &&
         readText(takeUntil('\t', &line), site->network_type) &&
         readNumber(takeUntil('\t', &line), &site->channel) && readNumber(line, &site->rssi);
}

}  // namespace

sitelist* camera::parseSites(std::string_view text, sitelist* list) {
  sitelist** tail = &list;
  while (*tail != nullptr) tail = &(*tail)->next;
  while (!text.empty()) {
    sitelist site{};
    if (!readSite(takeUntil('\n', &text), &site)) continue;
    *tail = new sitelist(site);
    tail = &(*tail)->next;
  }
  return list;
}

int camera::parseRssi(std::string_view text) {
  std::int32_t rssi = 0;
  return readNumber(takeUntil('\n', &text), &rssi) && text.empty() ? rssi : 0;
}

void ClearQueue(sitelist* list) {
  while (list != nullptr) {
    const sitelist* site = list;
    list = list->next;
    delete site;
  }
}
