// rtspurl.cgi and stream_auth.cgi: which path of the RTSP server is changed, and who may see the streams.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kRtspUrl{.cgi = "rtspurl.cgi",
                        .state = "rtspsvr.urlentry[0]=one rtspsvr.urlentry[1]=two rtspsvr.urlentry[3]=four",
                        .reply = "profileid=2&urlentry=two",
                        .writes = "set rtspsvr 1",
                        .key = "profileid=2"};

TEST(RtspUrl, ChangesThePathOfTheProfileThatItNames) {
  kRtspUrl.accepts({{"profileid=2"},
                    {"profileid=4", "", "profileid=4&urlentry=four"},
                    {"profileid=1&urlentry=a", "", "profileid=1&urlentry=a"},
                    {"profileid=2&urlentry=two", "", ""},
                    {"profileid=2&urlentry=live_2-x.mp4.ab"}});
  kRtspUrl.refuses(
      "! !profileid&urlentry=a profileid=0 profileid=5 profileid=2&!urlentry= profileid=2&!urlentry=a/b "
      "profileid=2&!urlentry=sixteen_letters_ profileid=2&urlentry=a&!path=b");
}

const Endpoint kStreamAuth{.cgi = "stream_auth.cgi",
                           .state = "httpsvr.livevideo=0 httpsvr.snapshoturl=1",
                           .reply = "livevideo=off&snapshoturl=on",
                           .writes = "set httpsvr 1"};

TEST(StreamAuth, PassesOverUnknownNamesUpToTwoParameters) {
  kStreamAuth.accepts({{"livevideo=on"},
                       {"snapshoturl=off&livevideo=on", "", "livevideo=on&snapshoturl=off"},
                       {"livevideo=on&colour=red", "", "livevideo=on"},
                       {"a=1&b=2", "", ""}});
  kStreamAuth.refuses("snapshoturl=yes livevideo=on&!colour=red&snapshoturl=off !a=1&b=2&c=3");
}

}  // namespace
}  // namespace camera::test
