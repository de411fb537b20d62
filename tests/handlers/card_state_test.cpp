// sdcard.cgi and sdcard_format.cgi: what the card's state is, and when it may be formatted.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kReady[] = "sd.state=2 sd.total=4096 sd.used=1023 sd.free=3073 sd.full_threshold=3";

const Endpoint kCard{
    .cgi = "sdcard.cgi", .state = kReady, .reply = "status=ready&total=4096&used=1023&free=3073"};
const Endpoint kFormat{.cgi = "sdcard_format.cgi", .state = kReady, .readsBack = false};

TEST(Card, TellsItsState) {
  kCard.accepts({{"", "sd.free=3072", "status=full&free=3072"},
                 {"", "record.enable=1", "status=recording"},
                 {"", "record.enable=1 sd.free=3072", "status=full&free=3072"},
                 {"", "sd.full_threshold=2147483647", "status=full"},
                 {"", "sd.state=3 record.enable=1", "status=protected"},
                 {"", "sd.state=4", "status=invalid"},
                 {"", "sd.state=6", "status=over_capacity"},
                 {"", "sd.state=8", "status=need_reinitialize"},
                 {"", "sd.state=9", "status=formatting"},
                 {"", "sd.state=10", "status=recording"}});
  for (const char* none : {"sd.state=0", "sd.state=1", "sd.state=7", "sd.state=11", "sd.state=255"})
    kCard.accepts({{"", none, "status="}});
  kCard.refuses("path=1");
  kCard.refuses("! path=1", "product.has_sdcard=0", 404);
}

constexpr char kCommand[] = "run sdmanage.sh format >> /tmp/sd.txt";

TEST(Card, IsFormattedOnGoAloneWhileNobodyWritesToIt) {
  const std::pair<std::string, std::string> models[] = {
      {"IPCAM", "IPCAM"}, {"a-model-name-of-26-letters", "a-model-name-of-26-let"}, {"", ""}, {"../x", ""}};
  for (const auto& [model, folder] : models) {
    scripted().reset(kReady + std::string{" record.enable=1 record.format_while_recording=1 system.model="} +
                     model);
    EXPECT_EQ(request("sdcard_format.cgi", "format=go").body,
              "status=recording&total=4096&used=1023&free=3073");
    EXPECT_EQ(scripted().writes(), kCommand + (folder.empty() ? "" : " run mkdir /mnt/usb/" + folder));
  }
  kFormat.refuses("! format=GO !act=go format=go&!act=1");
  kFormat.refuses("format=go", "sd.state=3", 409);
  kFormat.refuses("format=go", "sd.state=9", 409);
  kFormat.refuses("format=go", "record.enable=1", 409);
  kFormat.refuses("! format=go", "product.has_sdcard=0", 404);
}

TEST(Card, AFailedFormatIsTriedOnceMore) {
  scripted().reset(kReady);
  scripted().results[kCommand] = 0x100;
  EXPECT_EQ(request("sdcard_format.cgi", "format=go").status, 200);
  EXPECT_EQ(scripted().history({"run"}),
            std::string{kCommand} + " " + kCommand + "#2 run mkdir /mnt/usb/IPCAM");
}

}  // namespace
}  // namespace camera::test
