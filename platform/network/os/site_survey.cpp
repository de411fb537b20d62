// The files in which the driver leaves the wireless networks and the signal.
#include <cerrno>
#include <string>

#include "platform/file.h"
#include "platform/network/site_survey.h"
#include "platform/store/settings.h"

namespace {

constexpr char kSitesFile[] = "/run/camera/sites";
constexpr char kRssiFile[] = "/run/camera/wireless_rssi";

// Empty when the file cannot be read. That it is not there means that nothing was heard.
std::string contentOf(const char* path) {
  std::string text;
  camera::readFile(path, &text, ENOENT);
  return text;
}

}  // namespace

sitelist* dumpSites(sitelist* list) {
  return camera::parseSites(contentOf(kSitesFile), list);
}

int camera::wirelessRssi() {
  return camera::parseRssi(contentOf(kRssiFile));
}
