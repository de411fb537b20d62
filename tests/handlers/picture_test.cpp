// privacy.cgi and timestamp.cgi: what the picture shows.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kPrivacy{.cgi = "privacy.cgi", .reply = "enable=no&manual=off", .writes = "set privacy 1"};
const Endpoint kTimeStamp{.cgi = "timestamp.cgi",
                          .state = "osd.label=door",
                          .reply = "enable=off&showtime=off&label=door",
                          .writes = "set osd 1"};

TEST(Picture, PrivacyTakesTwoSwitchesWithWordsOfTheirOwn) {
  kPrivacy.accepts({{"manual=on"}, {"enable=yes"}, {"enable=yes&manual=on"}, {"enable=no&manual=off"}});
  kPrivacy.refuses("enable=on manual=yes enable=yes&manual=on&!colour=red");
  kPrivacy.refuses("! enable=yes", "product.has_privacy=0", 404);
}

TEST(Picture, TheLabelIsAnyTextThatTheRecordCanHold) {
  const std::string longest(30, 'x');
  kTimeStamp.accepts({{"enable=on"},
                      {"showtime=on&label=", "", "showtime=on&label="},
                      {"label=" + longest},
                      {"label=%c3%a9+%3d%22%0a", "", "label=\xC3\xA9 =\"%0A"},
                      {"enable=off&label=door", "", ""}});
  kTimeStamp.refuses("enable=yes showtime=1 !label=x" + longest + "&enable=on label=a%00b colour=red");
}

}  // namespace
}  // namespace camera::test
