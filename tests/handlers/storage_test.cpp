// The SD card's endpoints: formatting, pages of a folder, and downloads.
#include <cerrno>
#include <sstream>

#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kReady[] = "sd.state=2 sd.total=4096 sd.used=1023 sd.free=3073 sd.full_threshold=3";

const Endpoint kFormat{.cgi = "sdcard_format.cgi", .state = kReady, .readsBack = false};

constexpr char kCommand[] = "run sdmanage.sh format >> /tmp/sd.txt";

TEST(Card, IsFormattedOnGoUnlessItsStateOrARecordingForbidsIt) {
  const std::pair<std::string, std::string> models[] = {
      {"a-model-name-of-26-letters", " run mkdir /mnt/usb/a-model-name-of-26-let"}, {"", ""}, {"../x", ""}};
  for (const auto& [model, folder] : models)
    kFormat.accepts({{"format=go", "record.enable=1 record.format_while_recording=1 system.model=" + model,
                      "status=recording&total=4096&used=1023&free=3073", kCommand + folder}});
  kFormat.refuses("! format=GO !act=go format=go&!act=1");
  for (const char* state : {"sd.state=3", "sd.state=9", "record.enable=1"})
    kFormat.refuses("format=go", state, 409);
  kFormat.refuses("! format=go", "product.has_sdcard=0", 404);

  // A failed format is tried once more, unless it failed because its log cannot be written.
  const std::string tried = std::string{kCommand} + " run : >> /tmp/sd.txt";
  for (const bool hasLog : {true, false}) {
    scripted().reset(kReady);
    scripted().results = {{kCommand, 0x100}, {"run : >> /tmp/sd.txt", hasLog ? 0 : 0x200}};
    EXPECT_EQ(request("sdcard_format.cgi", "format=go").status, hasLog ? 200 : 500);
    EXPECT_EQ(scripted().writes(), hasLog ? tried + " " + kCommand + "#2 run mkdir /mnt/usb/IPCAM" : tried);
  }
}

const Endpoint kList{.cgi = "sdcard_list.cgi",
                     .state =
                         "sd.state=2 sd.free=1 system.model=Cam card=b.avi,1025 card=c,pipe card=d,folder "
                         "card=d/.h,1 card=d/x,1024 card=e,0 card=f,folder card=g,1 card=.i,1",
                     .reply =
                         "sd_status=ready&path=&page=1&pagesize=5&total_file=6&total_page=2&num=5&items=d|d|"
                         "n|1:f|d|n|0:b.avi|f|n|2:e|f|n|0",
                     .readsBack = false};
const Endpoint kDelete{
    .cgi = "sdcard_delete.cgi",
    .state = "sd.state=2 sd.free=1 system.model=Cam card=a.jpg,1 card=p,pipe card=d,folder card=d/x,1",
    .reply = "sd_status=ready&num=0&path=&items=",
    .readsBack = false};
const Endpoint kDownload{.cgi = "sdcard_download.cgi",
                         .state =
                             "sd.state=2 sd.free=1 card=2014,folder card=2014/clip.mp4,9 card=it's,1 "
                             "card=p,pipe card=l,locked card=\xFF,1"};

TEST(SdCardList, GivesAPageWithItsFoldersFirst) {
  kList.accepts({
      {"page=2&type=picture", "", "sd_status=ready&type=picture&page=2&num=1&items=g|f|n|1"},
      {"page=2147483647&type=video", "", "sd_status=ready&type=video&page=2147483647&num=0&items="},
      {"pagesize=100", "",
       "pagesize=100&total_page=1&num=6&items=d|d|n|1:f|d|n|0:b.avi|f|n|2:e|f|n|0:g|f|n|1"},
      {"path=/mnt/usb/Cam/d/", "", "path=/mnt/usb/Cam/d/&total_file=1&total_page=1&num=1&items=x|f|n|1"},
      {"path=d/.."},
      {"path=it's\xFF", "card=it's\xFF,folder", "path=it'\\''s\xFF&total_file=0&total_page=0&num=0&items="},
      {"path=f", "card=f/a:b,1 card=f/a|b,folder card=f/a,1 card=f/5G,5368709120",
       "path=f&total_file=4&total_page=1&num=4&items=5G|f|n|5242880:a|f|n|1"},
      {"", "sd.state=3", "sd_status=protected&total_file=0&total_page=0&num=0&items="},
      {"path=b.avi", "sd.state=3", "sd_status=protected&path=b.avi&total_file=0&total_page=0&num=0&items="},
  });
  kList.refuses("page=0 pagesize=7 path=b.avi path=.. path=d/../ path=d%00");
  kList.refuses("path=", "system.model=..");
  kList.refuses("path=none", "sd.state=3");
  for (const Endpoint& endpoint : {kList, kDelete, kDownload})
    endpoint.refuses("! name=a", "product.has_sdcard=0", 404);
  const std::string deep(200, 'a');
  const std::string path = "path=" + std::string(359, '/') + deep;
  const std::string card = "card=" + deep + ",folder card=" + deep + "/xyz,1";
  kList.accepts({{path, card, path + "&total_file=1&total_page=1&num=1&items=xyz|f|n|1"}});
  kList.refuses(path + "/", card, 500);
  scripted().reset(kList.state);
  for (const auto& [call, error, status] : {std::tuple{"get card folder", EIO, 500},
                                            {"get card names", ENOTDIR, 400},
                                            {"ask to examine f", ENOMEM, 500}}) {
    scripted().results = {{call, error}};
    EXPECT_EQ(request("sdcard_list.cgi", "").status, status) << call;
  }
}

TEST(SdCardDownload, LeadsToAFileAndToNothingElse) {
  const std::pair<const char*, std::string> redirects[] = {{"path=2014&file=clip.mp4", "2014/clip.mp4"},
                                                           {"file=2014//clip.mp4&type=x", "2014/clip.mp4"},
                                                           {"path=2014/..&file=it's", "it%27s"},
                                                           {"file=%FF", "%FF"},
                                                           {"file=a%0D%0A+%25", "a%0D%0A%20%25"}};
  for (const auto& [query, location] : redirects) {
    scripted().reset(kDownload.state);
    scripted().card["a\r\n %"] = "1";
    const Reply reply = request("sdcard_download.cgi", query);
    EXPECT_EQ(std::pair(reply.status, reply.body), std::pair(307, std::string{"error=307"})) << query;
    EXPECT_EQ(
        reply.header,
        "Cache-Control: no-cache, no-store, must-revalidate\r\nPragma: no-cache\r\nConnection: close\r\n"
        "Location: /volumes/local/" +
            location + "\r\n");
  }
  for (const std::string query : {"path=&file=2014", "path=&file=p", "path=&file=l"})
    kDownload.accepts({{query, "", query + "&result=2"}});
  for (const std::string query : {"path=&file=none", "path=&file=..", "path=&file=/", "path=..&file=p"})
    kDownload.accepts({{query, "", query + "&result=1"}});
  kDownload.accepts({{"path=2014", "", "path=2014&file=&result=2"},
                     {"file=it's", "sd.state=3", "path=&file=it'\\''s&result=1"},
                     {"path=2014%00x&file=p", "", "path=2014&file=p&result=1"}});
  kDownload.refuses("! file= path=2014&!file= file=../Cam/it's path=../&file=p");
}

}  // namespace
}  // namespace camera::test
