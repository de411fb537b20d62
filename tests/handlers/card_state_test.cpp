// sdcard.cgi and sdcard_format.cgi: what the card's state is, and when it may be formatted.
#include <sstream>

#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kReady[] = "sd.state=2 sd.total=4096 sd.used=1023 sd.free=3073 sd.full_threshold=3";

const Endpoint kCard{
    .cgi = "sdcard.cgi", .state = kReady, .reply = "status=ready&total=4096&used=1023&free=3073"};
const Endpoint kFormat{.cgi = "sdcard_format.cgi", .state = kReady, .readsBack = false};

TEST(Card, TellsItsState) {
  std::istringstream words{
      "- - recording protected invalid full over_capacity - need_reinitialize formatting recording -"};
  std::string word;
  for (int code = 0; words >> word; ++code)
    kCard.accepts(
        {{"", "record.enable=1 sd.state=" + std::to_string(code), "status=" + (word == "-" ? "" : word)}});
  kCard.accepts({{"", "sd.state=255", "status="},
                 {"", "sd.free=3072 record.enable=1", "status=full&free=3072"},
                 {"", "sd.full_threshold=2147483647", "status=full"}});
  kCard.refuses("path=1");
  kCard.refuses("! path=1", "product.has_sdcard=0", 404);
}

constexpr char kCommand[] = "run sdmanage.sh format >> /tmp/sd.txt";

TEST(Card, IsFormattedOnGoAloneWhileNobodyWritesToIt) {
  const std::pair<std::string, std::string> models[] = {
      {"a-model-name-of-26-letters", " run mkdir /mnt/usb/a-model-name-of-26-let"}, {"", ""}, {"../x", ""}};
  for (const auto& [model, folder] : models)
    kFormat.accepts({{"format=go", "record.enable=1 record.format_while_recording=1 system.model=" + model,
                      "status=recording&total=4096&used=1023&free=3073", kCommand + folder}});
  kFormat.refuses("! format=GO !act=go format=go&!act=1");
  for (const char* state : {"sd.state=3", "sd.state=9", "record.enable=1"})
    kFormat.refuses("format=go", state, 409);
  kFormat.refuses("! format=go", "product.has_sdcard=0", 404);

  // Tried once more where it fails.
  scripted().reset(kReady);
  scripted().results[kCommand] = 0x100;
  EXPECT_EQ(request("sdcard_format.cgi", "format=go").status, 200);
  EXPECT_EQ(scripted().writes(), std::string{kCommand} + " " + kCommand + "#2 run mkdir /mnt/usb/IPCAM");
}

}  // namespace
}  // namespace camera::test
