// What an endpoint shows it also accepts: on every product of the virtual camera, each value that a new
// camera shows under the name of a parameter is sent back, alone and with all the others.
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "framework/endpoint_table.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text, char end) {
  std::istringstream rest{text};
  Lines lines;
  for (std::string line; std::getline(rest, line, end);)
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  return lines;
}

Lines linesOfFile(const std::filesystem::path& path) {
  std::ifstream file{path};
  return linesOf({std::istreambuf_iterator<char>{file}, {}}, '\n');
}

const std::vector<std::filesystem::directory_entry> kProducts{
    std::filesystem::directory_iterator{CAMERA_SOURCE_DIR "/virtual-camera/products"}, {}};

// A new camera of that product, in the words of a test's state. Its clock is set, and its day/night switch
// leaves the LEDs to the client.
std::string stateOf(const std::filesystem::path& product) {
  std::string state = "ir.icr_mode=1 curtime.year=2024 curtime.month=2 curtime.day=29 product=";
  for (std::string line : linesOfFile(product / "product.conf")) {
    line.erase(line.find(" ="), 1).erase(line.find("= ") + 1, 1);
    std::replace(line.begin(), line.end(), ' ', '+');
    state += " product." + line;
  }
  for (std::string line : linesOfFile(product / "settings")) {
    line[line.find(' ')] = '.';
    state += " " + line;
  }
  return state;
}

std::string asQuery(const std::string& line) {
  std::string query;
  for (const char c : line) {
    char escape[4];
    std::snprintf(escape, sizeof escape, "%%%02x", static_cast<unsigned char>(c));
    query += c == '=' && query.find('=') == query.npos ? "=" : std::isalnum(c) != 0 ? std::string{c} : escape;
  }
  return query;
}

// True if the refusal is about something else than the value.
bool isOther(const std::string& line, const std::string& refusal) {
  return refusal.ends_with(": no such parameter") || refusal.find(": required: ") != refusal.npos ||
         (line.ends_with('=') && refusal.starts_with("error=400"));  // a text that must not be empty
}

void sendBack(const std::string& cgi, const std::string& plain) {
  const std::string shown = request(cgi, plain).body;
  std::string all = plain;
  for (const std::string& line : linesOf(shown, '&')) {
    const std::string query = plain + "&" + asQuery(line);
    const Reply reply = request(cgi, query);
    if (isOther(line, reply.body)) continue;
    EXPECT_EQ(reply.status, 200) << cgi << "?" << query << " " << reply.body;
    all += "&" + asQuery(line);
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

}  // namespace
}  // namespace camera::test
