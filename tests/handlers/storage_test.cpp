// sdcard_list.cgi, sdcard_delete.cgi and sdcard_download.cgi: pages of a folder, what is deleted and where a
// download leads.
#include <cerrno>

#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kReady[] = "sd.state=2 sd.free=1 system.model=Cam";

const Endpoint kList{
    .cgi = "sdcard_list.cgi",
    .state =
        std::string{kReady} +
        " card=b.avi,1025 card=c,pipe card=d,folder card=d/.h,1 card=d/x,1 card=d/y,1 card=e,0 card=f,folder "
        "card=.g,1 card=Musics,folder card=Musics/z,1024",
    .reply =
        "sd_status=ready&path=&page=1&pagesize=5&total_file=6&total_page=2&num=5&"
        "items=Musics|d|n|1:d|d|n|2:b.avi|f|n|2:e|f|n|0",
    .readsBack = false};
const Endpoint kDelete{.cgi = "sdcard_delete.cgi",
                       .state = std::string{kReady} + " card=a.jpg,1 card=p,pipe card=d,folder card=d/x,1",
                       .reply = "sd_status=ready&num=0&path=&items=",
                       .readsBack = false};
const Endpoint kDownload{
    .cgi = "sdcard_download.cgi",
    .state =
        std::string{kReady} + " card=2014,folder card=2014/clip.mp4,9 card=it's,1 card=p,pipe card=l,locked",
    .readsBack = false};

TEST(SdCardList, GivesAPageWithItsFoldersFirst) {
  kList.accepts(
      {{"page=2", "", "page=2&num=1&items=f|d|n|0"},
       {"page=3&type=video", "", "sd_status=ready&type=video&page=3&num=0&items="},
       {"page=2147483647&pagesize=100", "", "page=2147483647&pagesize=100&total_page=1&num=0&items="},
       {"pagesize=10&type=picture", "",
        "sd_status=ready&type=picture&pagesize=10&total_page=1&num=6&"
        "items=Musics|d|n|1:d|d|n|2:f|d|n|0:b.avi|f|n|2:e|f|n|0"},
       {"path=d", "", "path=d&total_file=2&total_page=1&num=2&items=x|f|n|1:y|f|n|1"},
       {"path=/mnt/usb/Cam/d/", "",
        "path=/mnt/usb/Cam/d/&total_file=2&total_page=1&num=2&items=x|f|n|1:y|f|n|1"},
       {"path=/Musics", "", "path=/Musics&total_file=1&total_page=1&num=1&items=z|f|n|1"},
       {"path=f", "", "path=f&total_file=0&total_page=0&num=0&items="},
       {"path=d/..", "", "path=d/.."},
       {"path=it's", "card=it's,folder", "path=it'\\''s&total_file=0&total_page=0&num=0&items="},
       {"path=f", "card=f/a:b,1 card=f/a|b,folder card=f/a,1 card=f/5G,5368709120",
        "path=f&total_file=4&total_page=1&num=4&items=5G|f|n|5242880:a|f|n|1"},
       {"", "sd.state=3", "sd_status=protected&total_file=0&total_page=0&num=0&items="}});
  kList.refuses(
      "page=0 page=2147483648 page= pagesize=7 pagesize= type=music path=none path=b.avi path=.. path=/.. "
      "path=../Cam path=d/../ path=a/Musics path=d%00 path=/mnt/usb/x path=/etc name=d");
  kList.refuses("path=none path=", "sd.state=3 system.model=..");
  for (const Endpoint& endpoint : {kList, kDelete}) endpoint.refuses("! name=a", "product.has_sdcard=0", 404);
  kList.refuses("path=none", "sd.state=3");
  const std::string deep(200, 'a');
  const std::string path = std::string(359, '/') + deep;
  kList.accepts({{"path=" + path, "card=" + deep + ",folder card=" + deep + "/xyz,1",
                  "path=" + path + "&total_file=1&total_page=1&num=1&items=xyz|f|n|1"}});
  kList.refuses("path=/" + path, "card=" + deep + ",folder card=" + deep + "/xyz,1", 500);
  scripted().reset(kList.state);
  for (const auto& [call, error, status] : {std::tuple{"get card folder", EIO, 500},
                                            {"get card names", ENOTDIR, 400},
                                            {"ask to examine f", ENOMEM, 500}}) {
    scripted().results = {{call, error}};
    EXPECT_EQ(request("sdcard_list.cgi", "pagesize=10").status, status) << call;
  }
}

TEST(SdCardDelete, DeletesTheEntriesOfTheListAndNothingElse) {
  const std::tuple<std::string, std::string, std::string, std::string> table[] = {
      {"a.jpg:b.jpg", "", "1 a.jpg|f|0:b.jpg|n|1", "run remove a.jpg"},
      {"d|d|n|1", "", "1 d|d|0", "run rm -rf '/mnt/usb/Cam/d'"},
      {":p|x::d/x|f|n|1:", "", "1 p|n|2:d/x|f|0", "run remove d/x"},
      {"d/../a.jpg:/d/", "", "2 d/../a.jpg|f|0:/d/|d|0", "run remove a.jpg run rm -rf '/mnt/usb/Cam/d'"},
      {"../Cam/d:..:.:/:|d|n|1:d/..:../../etc:a.jpg/%00", "",
       "0 ../Cam/d|n|1:..|n|1:.|n|1:/|n|1:|n|1:d/..|n|1:"
       "../../etc|n|1:a.jpg/%00|n|1",
       ""},
      {"it's%0A$(a)`b`;-rf", "card=it's%0A$(a)`b`;-rf,folder", "1 it's%0A$(a)`b`;-rf|d|0",
       "run rm -rf '/mnt/usb/Cam/it'\\''s%0A$(a)`b`;-rf'"},
      // Entries that no list can carry.
      {"a.jpg:d", "card=a.jpg:d,1", "0 a.jpg|n|2:d|n|2", ""},
      {"q:d:a.jpg", "card=q:d,1", "1 q|n|1:d|n|2:a.jpg|f|0", "run remove a.jpg"},
      {"d|d|n|1|f|n|1:a.jpg", "card=d|d|n|1,1", "1 d|n|2:a.jpg|f|0", "run remove a.jpg"},
      {"d/x|y|f|n|1", "card=d/x|y,1", "0 d/x|n|2", ""},
      {"d:k/x", "card=d:k,folder", "0 d|n|2:k/x|n|1", ""}};
  for (const auto& [entries, state, results, writes] : table) {
    scripted().reset(kDelete.state + " " + state);
    if (const auto odd = scripted().card.find(entries); odd != scripted().card.end())
      scripted().card["it's\n$(a)`b`;-rf"] = odd->second;
    const Reply reply = request("sdcard_delete.cgi", "type=x&name=" + entries);
    const std::size_t space = results.find(' ');
    EXPECT_EQ(reply.body, "sd_status=ready&num=" + results.substr(0, space) +
                              "&path=&items=" + results.substr(space + 1));
    std::string written = scripted().writes();
    if (const std::size_t line = written.find('\n'); line != written.npos) written.replace(line, 1, "%0A");
    EXPECT_EQ(written, writes) << entries;
  }
}

TEST(SdCardDelete, KeepsToItsLimits) {
  const std::string name(255, 'n');
  const std::string folder(51, 'f');
  kDelete.refuses(
      "name=" + name + "n name=" + name + "|" + std::string(78, '1') + " path=" + folder + "&!name=" + name,
      "card=" + folder + ",folder", 500);
  kDelete.accepts({{"name=" + name + "|" + std::string(77, '1'), "", "items=" + name + "|n|1", ""},
                   {"path=" + folder.substr(1) + "&name=" + name, "card=" + folder.substr(1) + ",folder",
                    "path=" + folder.substr(1) + "&items=" + name + "|n|1", ""},
                   {"name=a.jpg", "sd.state=3", "items=", ""},
                   {"path=d&name=x", "", "num=1&path=d&items=x|f|0", "run remove d/x"}});
  kDelete.refuses("path=none path=d/../ path=.. path=a.jpg path=d%00 nam=a.jpg file=a.jpg");
  for (const std::size_t quotes : {std::size_t{77}, std::size_t{78}}) {  // each is four bytes of the command
    const std::string quoted(quotes, '\'');
    scripted().reset(std::string{kReady} + " card=" + quoted + ",folder");
    EXPECT_TRUE(
        request("sdcard_delete.cgi", "name=" + quoted).body.ends_with(quotes == 77 ? "|d|0" : "|d|2"));
    EXPECT_EQ(scripted().writes().empty(), quotes == 78);
  }
}

TEST(SdCardDownload, LeadsToAFileAndToNothingElse) {
  const std::tuple<const char*, std::string> redirects[] = {
      {"path=2014&file=clip.mp4", "2014/clip.mp4"},
      {"file=2014//clip.mp4&type=x", "2014/clip.mp4"},
      {"path=2014/..&file=it's", "it%27s"},
      {"file=a%0D%0A%C3%A4+%25", "a%0D%0A%C3%A4%20%25"}};
  for (const auto& [query, location] : redirects) {
    scripted().reset(kDownload.state);
    scripted().card["a\r\n\xC3\xA4 %"] = "1";
    const Reply reply = request("sdcard_download.cgi", query);
    EXPECT_EQ(std::pair(reply.status, reply.body), std::pair(307, std::string{"error=307"})) << query;
    EXPECT_EQ(
        reply.header,
        "Cache-Control: no-cache, no-store, must-revalidate\r\nPragma: no-cache\r\nConnection: close\r\n"
        "Location: /volumes/local/" +
            location + "\r\n");
  }
  kDownload.refuses("! file=p", "product.has_sdcard=0", 404);
  kDownload.refuses("! file= path=2014&!file= file=../Cam/it's path=../&file=p file=p&!name=p");
  const std::tuple<std::string, std::string, const char*> results[] = {
      {"path=&file=2014", "2", ""},
      {"path=&file=p", "2", ""},
      {"path=&file=l", "2", ""},
      {"path=&file=none", "1", ""},
      {"path=&file=..", "1", ""},
      {"path=&file=/", "1", ""},
      {"path=..&file=p", "1", ""},
      {"path=none&file=p", "1", ""},
      {"path=2014", "1", ""},
      {"path=&file=l", "1", "sd.state=3"},
      {"path=&file=l", "1", "system.model="}};
  for (const auto& [query, result, state] : results) {
    scripted().reset(kDownload.state + " " + state);
    const std::string shown = query + (query == "path=2014" ? "&file=" : "") + "&result=" + result;
    EXPECT_EQ(request("sdcard_download.cgi", query).body, shown);
  }
}

}  // namespace
}  // namespace camera::test
