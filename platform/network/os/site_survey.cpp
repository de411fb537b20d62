// Reads the files to which the driver writes the wireless networks and the signal.
#include "platform/network/site_survey.h"

#include <cerrno>
#include <string>

#include "platform/file.h"

namespace camera {
namespace {

// A missing file means that nothing was heard.
std::string contentOf(const char* path) {
  std::string text;
  readFile(path, &text, ENOENT);
  return text;
}

}  // namespace

std::vector<Site> surveySites() {
  return parseSites(contentOf("/run/camera/sites"));
}

int wirelessRssi() {
  return parseRssi(contentOf("/run/camera/wireless_rssi"));
}

}  // namespace camera
