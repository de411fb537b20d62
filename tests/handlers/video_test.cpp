// video.cgi and stream_info.cgi: which combinations of values each sensor and display system accepts, and
// what is offered for them.
#include <cstring>
#include <sstream>

#include "platform/store/records/profile.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

// A sensor, the codecs of its four profiles (M: MJPEG, 4: MPEG4, H: H264), and the profiles that may have the
// largest resolution.
constexpr struct Model {
  std::string_view name;
  std::string_view codecs[4];
  std::string_view largest;
  bool hasModes;
  bool isFast;  // and has four resolutions and the high bit rates
} kModels[] = {{"ov7740", {"M4H", "4H", "M", "4H"}, "1234", true, false},
               {"ov9710", {"4H", "4H", "M", "4H"}, "13", true, true},
               {"mt9v136", {"4H", "M4H", "M", "4"}, "1234", false, false},
               {"mdin220", {"4H", "M4H", "M", "4"}, "1234", false, false},
               {"ip2986", {"M4H", "M4H", "M", "4"}, "1234", false, false},
               {"hm1375", {"M4H", "4H", "M", "4H"}, "124", true, true}};

// By display system: the resolutions and the frame rates; * marks one that only fast sensors have.
constexpr struct {
  const char* resolutions[4];
  const char* rates;
} kDisplays[] = {{{"640x480", "320x240", "160x112", "80x60"}, " 1 2 3 5 6 10 15 30 "},
                 {{"1280x1024", "640x512", "320x256", "160x128"}, " 1 2 3 5 6 10 "},
                 {{"704x480", "352x240", "176x112", "88x60"}, " 1 2 3 5 6 10 15 30 "},
                 {{"704x576", "352x288", "176x144", "88x72"}, " 1 2 3 5 8 12 25 "},
                 {{"704x576", "352x288", "176x144", "88x72"}, " 1 2 3 5 8 12 25 "},
                 {{"1024x768", "512x384", "256x192", "128x96"}, " 1 2 3 5 6 10 "},
                 {{"640x480", "320x240", "160x112", "80x60"}, " 1 2 3 5 8 12 25 "},
                 {{"1280x720", "640x352", "320x176", "160x80"}, " 1 2 3 5 6 10 15 *30 "},
                 {{"1280x960", "640x480", "320x240", "160x112"}, " 1 2 3 5 6 10 15 *30 "},
                 {{"1920x1080", "960x540", "480x270", "240x128"}, " 1 2 3 5 6 10 15 30 "},
                 {{"1280x800", "640x400", "320x192", "160x96"}, " 1 2 3 5 6 10 15 30 "}};

// A request; -1: not given.
struct Asked {
  const Model& model;
  int ds, p, c = -1, r = -1, f = -1, mode = -1;
};

bool hasRate(const Asked& q) {
  const std::string_view rates = kDisplays[q.ds].rates;
  const std::string rate = std::to_string(q.f) + " ";
  const bool isFast = q.model.isFast && rates.find("*" + rate) != rates.npos;
  return (isFast || rates.find(" " + rate) != rates.npos) &&
         !(q.model.name == "mt9v136" && q.p == 1 && q.f < 5);
}

// True if the request is accepted; the record is then what is stored.
bool judge(const Asked& q, ProfileSettings* record) {
  const ProfileSettings stored = *record;
  const int resolution = q.r < 0 ? stored.resolution[q.p] : q.r;
  const int rate = q.f < 0 ? stored.frame_rate[q.p] : q.f;
  const bool isMjpegOnly = q.ds == 1 && q.p == 1 && resolution == 0;
  const bool becomesMjpeg = isMjpegOnly && q.r == 0 && q.c < 0;
  const int codec = becomesMjpeg ? 0 : q.c < 0 ? stored.codec[q.p] : q.c;
  const bool mayBeLargest = q.model.largest.find(static_cast<char>('0' + q.p)) != std::string_view::npos;
  const bool isFirstsOnly = q.ds == 1 || q.ds == 5 || q.ds == 8 || (q.ds == 7 && q.model.name != "ov9710");
  if (q.f >= 0 && !hasRate(q)) return false;
  if (q.c >= 0 && q.model.codecs[q.p - 1].find("M4H"[q.c]) == std::string_view::npos) return false;
  if (q.c > 0 && isMjpegOnly) return false;
  if (q.r == 3 && !q.model.isFast) return false;
  if (q.r == 0 && (!mayBeLargest || (isFirstsOnly && q.p > 1))) return false;
  if (q.mode == 0 && (q.p == 3 || codec == 0)) return false;
  const bool isSlow = q.model.name == "ov9710" && q.p == 3 && resolution == 0 && (q.r == 0 || q.f >= 0);
  if (isSlow && rate > 5) return false;

  record->resolution[q.p] = static_cast<std::uint8_t>(resolution);
  record->frame_rate[q.p] = static_cast<std::uint8_t>(rate);
  if (q.c >= 0) record->codec[q.p] = static_cast<std::uint8_t>(q.c);
  if (q.mode >= 0) record->quality_mode[q.p] = static_cast<std::uint8_t>(q.mode);
  if (std::memcmp(record, &stored, sizeof stored) == 0) return true;
  if (q.c == 0 && q.mode < 0) record->quality_mode[q.p] = 1;
  record->codec[q.p] = static_cast<std::uint8_t>(codec);
  return true;
}

// The record is not reset between requests, so that each meets the values of those before it.
void ask(const Asked& q) {
  constexpr const char* kCodecs[] = {"MJPEG", "MPEG4", "H264"};
  std::string query = "profileid=" + std::to_string(q.p);
  if (q.c >= 0) query += std::string{"&codec="} + kCodecs[q.c];
  if (q.r >= 0) query += std::string{"&resolution="} + kDisplays[q.ds].resolutions[q.r];
  if (q.f >= 0) query += "&framerate=" + std::to_string(q.f);
  if (q.mode >= 0) query += std::string{"&qualitymode="} + (q.mode == 0 ? "CBR" : "Fixquality");
  std::vector<std::uint8_t>& bytes = scripted().records[static_cast<std::size_t>(RecordIndex::profile)];
  ProfileSettings expected;
  std::memcpy(&expected, bytes.data(), sizeof expected);
  Asked judged = q;
  if (!q.model.hasModes) judged.mode = -1;  // ignored
  const int status = judge(judged, &expected) ? 200 : 400;
  const Reply reply = request("video.cgi", query);
  EXPECT_TRUE(reply.status == status && std::memcmp(&expected, bytes.data(), sizeof expected) == 0)
      << q.model.name << " display system " << q.ds << " " << query << " " << reply.body;
}

void askAll(Asked q) {
  for (const int rate : {1, 2, 3, 4, 5, 6, 8, 10, 12, 15, 25, 30}) {
    q.f = rate;
    ask(q);
  }
  const bool isLimited = q.model.name == "ov9710" && q.p == 3;  // in its frame rate, by the resolution
  for (q.c = -1; q.c < 3; ++q.c)
    for (q.r = -1; q.r < 4; ++q.r)
      for (q.mode = -1; q.mode < 2; ++q.mode)
        for (const int rate : {-1, 5, 6}) {
          q.f = rate;
          if (rate < 0 || isLimited) ask(q);
        }
  const bool hasHigh = q.model.isFast || (q.model.name == "ip2986" && q.p == 1);
  const std::string query = "profileid=" + std::to_string(q.p) + "&bitrate=3072";
  EXPECT_EQ(request("video.cgi", query).status, hasHigh ? 200 : 400) << q.model.name << " " << query;
}

TEST(Video, AcceptsExactlyTheCombinationsThatFitTheSensorAndTheDisplaySystem) {
  for (const Model& model : kModels)
    for (int ds = 0; ds < static_cast<int>(std::size(kDisplays)); ++ds) {
      scripted().reset("product.sensor=" + std::string{model.name} +
                       " profile.display_system=" + std::to_string(ds));
      for (int p = 1; p <= 4; ++p) askAll({model, ds, p});
    }
}

// A sensor, its state, and lines that are offered then.
constexpr char kOffers[] = R"(
ov7740 product.has_h264=0 videos=MJPEG,MPEG4 codeclist1=MJPEG,MPEG4 codeclist2=MPEG4,H264
ov7740 profile.display_system=2 videos=MJPEG,MPEG4,H264 codeclist1=MPEG4,H264
ov9710 profile.display_system=1 resolutions=1280x1024,640x512,320x256,160x128
       resolutionlist1=1280x1024,640x512,320x256,160x128 resolutionlist2=640x512,320x256,160x128
       resolutionlist3=1280x1024,640x512,320x256,160x128 resolutionlist4=640x512,320x256,160x128
       framerates=1,2,3,5,10 frameratelist4=1,2,3,5,10 vbitratelist3=
       vbitratelist4=64,128,256,384,512,768,1024,1536,2048,3072,4096
       vban=1|MJPEG|-|-|-|-:2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-:2|-|1280x800|-|-|-:4|-|1280x800|-|-|-:3|-|1280x800|6,30|-|-
ov9710 profile.display_system=8 framerates=1,2,3,5,10,15
ov9710_720p profile.display_system=7 framerates=1,2,3,5,6,10,15,30 resolutionlist3=1280x720,640x352,320x176,160x80
       resolutionlist2=640x352,320x176,160x80 resolutionlist4=640x352,320x176,160x80
       vban=1|MJPEG|-|-|-|-:2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-:2|-|1280x720|-|-|-:4|-|1280x720|-|-|-:3|-|1280x720|6,30|-|-
ip2986 profile.display_system=7 resolutionlist2=1280x720,640x352,320x176 framerates=1,2,3,5,10,15 qualitymodes=CBR
       codeclist4=MPEG4,H264 vbitratelist2=64,128,256,384,512,768,1024,1536,2048,3072,4096 vban=
hm1375 profile.display_system=8 resolutionlist1=1280x960,640x480,320x240,160x112
       resolutionlist2=640x480,320x240,160x112 resolutionlist3=640x480,320x240,160x112
       resolutionlist4=640x480,320x240,160x112 framerates=1,2,3,5,6,10,15,30 qualitymodes=CBR,Fixquality vban=
ip2986 profile.display_system=3 framerates=1,2,3,5,8,12,25
ip2986 profile.display_system=4 framerates=1,2,3,5,6,10,15,30
ip2986 profile.display_system=5 framerates=1,2,3,5,10
ip2986 profile.display_system=6 framerates=1,2,3,5,8,12,25
)";

TEST(StreamInfo, OffersWhatTheSensorAndTheDisplaySystemHave) {
  std::istringstream words{kOffers};
  std::string state;
  std::string body;
  for (std::string word; words >> word;) {
    const bool isSensor = word.find('=') == word.npos;
    if (isSensor || word.starts_with("product.") || word.starts_with("profile.")) {
      state = isSensor ? "product.sensor=" + word : state + " " + word;
      scripted().reset(state);
      body = "&" + request("stream_info.cgi", "").body + "&";
    } else {
      EXPECT_NE(body.find("&" + word + "&"), body.npos) << state << ": " << word << " in " << body;
    }
  }
}

// A display system that is switched between two readings would go with the other one's profiles.
TEST(Video, ReadsTheDisplaySystemAndTheProfilesAtOnce) {
  scripted().reset("");
  scripted().results = {{"get profile#2", static_cast<int>(StoreResult::kFailed)}};
  EXPECT_EQ(request("video.cgi", "profileid=1&framerate=5").status, 200);
}

}  // namespace
}  // namespace camera::test
