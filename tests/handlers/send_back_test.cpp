// What an endpoint shows it also accepts: on every product of the virtual camera, each value that a new
// camera shows under the name of a parameter is sent back, alone and with all the others.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "framework/endpoint_table.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const std::vector<std::filesystem::directory_entry> kProducts{
    std::filesystem::directory_iterator{CAMERA_SOURCE_DIR "/virtual-camera/products"}, {}};

// The lines of a file of the product, each with the text `before` in front. " = " becomes =, and another
// space +, or a dot if before is empty.
std::string wordsOf(const std::filesystem::path& path, const std::string& before) {
  std::ifstream file{path};
  std::string words;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    if (const std::size_t equals = line.find(" = "); equals != line.npos) line.replace(equals, 3, "=");
    std::replace(line.begin(), line.end(), ' ', before.empty() ? '.' : '+');
    words.append(" ").append(before).append(line);
  }
  return words;
}

// A new camera of that product, in the words of a test's state. Its clock is set, and its day/night switch
// leaves the LEDs to the client.
std::string stateOf(const std::filesystem::path& product) {
  return "ir.icr_mode=1 curtime.year=2024 curtime.month=2 curtime.day=29 product=" +
         wordsOf(product / "product.conf", "product.") + wordsOf(product / "settings", "");
}

// True if the refusal is about something else than the value.
bool isOther(const std::string& line, const std::string& refusal) {
  return refusal.ends_with(": no such parameter") || refusal.find(": required: ") != refusal.npos ||
         (line.ends_with('=') && refusal.starts_with("error=400"));  // a text that must not be empty
}

void sendBack(const std::string& cgi, const std::string& plain) {
  const std::string shown = request(cgi, plain).body;
  std::istringstream lines{shown};
  std::string all = plain;
  for (std::string line; std::getline(lines, line, '&');) {
    for (std::size_t at = 0; (at = line.find_first_of("+%", at)) != line.npos; at += 3)
      line.replace(at, 1, line[at] == '+' ? "%2B" : "%25");
    const Reply reply = request(cgi, plain + "&" + line);
    if (isOther(line, reply.body)) continue;
    EXPECT_EQ(reply.status, 200) << cgi << "?" << plain << "&" << line << " " << reply.body;
    all += "&" + line;
  }
  EXPECT_EQ(request(cgi, all).status, 200) << cgi << "?" << all;
  EXPECT_EQ(request(cgi, plain).body, shown);
}

TEST(EveryEndpoint, AcceptsWhatItShowsOnANewCamera) {
  for (const auto& product : kProducts)
    for (const EndpointEntry& entry : endpointTable()) {
      SCOPED_TRACE(product);
      scripted().reset(stateOf(product));
      const std::string cgi{entry.name};
      for (const char* plain : {"", "profileid=1", "profileid=2", "profileid=3", "profileid=4"}) {
        const bool isShown = request(cgi, plain).status == 200 && scripted().writes().empty();
        if (isShown) sendBack(cgi, plain);
        if (isShown && *plain == '\0') break;
      }
    }
}

TEST(EveryEndpoint, ShowsAfterASensorResetWhatANewCameraShows) {
  for (const auto& product : kProducts) {
    scripted().reset(stateOf(product));
    const std::string shown = request("sensor.cgi", "").body;
    scripted().store(
        "image.brightness=5 image.contrast=0 image.saturation=100 image.hue=5 image.sharpness=0");
    EXPECT_EQ(request("sensor_reset.cgi", "reset=go").body, "reset=yes");
    EXPECT_EQ(request("sensor.cgi", "").body, shown) << product;
  }
}

// Plain or in base64.
TEST(EveryEndpoint, ForbidsToStoreAReplyThatHoldsASecret) {
  const std::string secret = "zq7Secretzq7z";
  std::string holders;
  scripted().reset("product.wireless=1 wireless.auth=2 wireless.encryption=3");
  for (const char* field :
       {"account.admin_password", "ddns.password", "ftp.pass", "pppoe.password", "smtp.pass", "wireless.key"})
    scripted().store(field + ("=" + secret));
  for (const EndpointEntry& entry : endpointTable()) {
    const std::string cgi{entry.name};
    const Reply reply = request(cgi, cgi == "user_mod.cgi" ? "name=admin" : "");
    const bool isPlain = reply.body.find(secret) != reply.body.npos;
    if (!isPlain && reply.body.find("enE3U2VjcmV0enE3eg") == reply.body.npos) continue;
    holders += cgi + " ";
    EXPECT_EQ(reply.header, "Cache-Control: no-store\r\n") << cgi;
  }
  EXPECT_EQ(holders,
            "action_ftp.cgi action_mail.cgi ddns.cgi network.cgi pppoe.cgi user_mod.cgi wireless.cgi ");
}

}  // namespace
}  // namespace camera::test
