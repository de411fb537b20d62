// video.cgi and stream_info.cgi: how a profile is shown and changed, every combination of values on every
// sensor and display system, against the rules written a second time, and where what is offered differs from
// what is accepted.
#include <cstring>
#include <sstream>

#include "platform/store/records/profile.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kVideo{
    "video.cgi", "product.sensor=ov7740",
    "vprofileformat=0.9&profileid=1&codec=MPEG4&resolution=640x480&framerate=15&qualitymode=CBR&bitrate=1024",
    "set profile", "profileid=1"};

TEST(Video, ShowsAndChangesTheProfileThatIsNamed) {
  const char* kFixed = "profile.quality_mode[1]=1";
  kVideo.accepts(
      "profileid=1&codec=H264&resolution=160x112&framerate=30&bitrate=2048&quality=0 "
      "profileid=1&codec=MPEG4&resolution=640x480&framerate=15&qualitymode=CBR&bitrate=1024&quality=80");
  kVideo.accepts(
      {{"profileid=2", "", "profileid=2&resolution=320x240&bitrate=512"},
       {"profileid=3", "",
        "profileid=3&codec=MJPEG&resolution=320x240&framerate=5&qualitymode=Fixquality&quality=75&-bitrate"},
       {"profileid=1&vprofileformat=", "", ""},
       {"profileid=4&qualitymode=Fixquality&quality=100", "", "qualitymode=Fixquality&quality=95&-bitrate"},
       {"profileid=1&quality=60", kFixed, "quality=55"},
       {"profileid=1&quality=61", kFixed, "quality=65"},
       {"profileid=1&quality=70", kFixed, "quality=65"},
       {"profileid=1&quality=100", kFixed, "quality=95"}});
  kVideo.refuses(
      "! !profileid&codec=H264 profileid=0 profileid=5 profileid=+1 profileid=1&!resolution=640X480 "
      "profileid=1&!resolution=80x60 profileid=1&!framerate=015 profileid=1&!quality=101 "
      "profileid=1&!qualitymode=cbr profileid=1&!bitrate=3072 profileid=1&codec=H264&!colour=red");
  kVideo.refuses("profileid=1&!codec=H264 profileid=1&!codec=H265", "product.has_h264=0");
}

TEST(Video, HasABitRateOrAQualityAndTheSensorsBitRates) {
  const std::string sensor = "product.sensor=";
  kVideo.accepts(
      {{"profileid=1&bitrate=4096&qualitymode=never", sensor + "ip2986", "bitrate=4096"},
       {"profileid=2&bitrate=3072", sensor + "ov9710_720p"},
       {"profileid=2&codec=MJPEG", sensor + "mdin220", "codec=MJPEG&-qualitymode&quality=75&-bitrate"},
       {"profileid=2&codec=H264", sensor + "mdin220 profile.codec[2]=0",
        "codec=H264&framerate=15&qualitymode=CBR&bitrate=512&-quality"}});
  kVideo.refuses("profileid=2&!bitrate=3072", sensor + "ip2986");
  kVideo.refuses("profileid=1&!bitrate=3072", sensor + "mt9v136");
  // Which sensor it is counts only for a request that names a profile.
  kVideo.refuses("profileid=1 profileid=1&colour=red", sensor + "vicam", 500);
  kVideo.refuses("profileid=5 !profileid&colour=red", sensor + "vicam");
}

// What follows from a value is no change of its own: it is shown, but stored only with another.
TEST(Video, ShowsWhatFollowsFromAValueAndStoresItWithAChange) {
  Endpoint shown = kVideo;
  shown.readsBack = false;
  shown.accepts(
      {{"profileid=1&codec=MJPEG", "profile.codec[1]=0", "qualitymode=Fixquality&quality=75&-bitrate", ""},
       {"profileid=1&resolution=1280x1024", "profile.display_system=1", "codec=MJPEG", ""}});
  kVideo.accepts({{"profileid=1&codec=MJPEG", "", "codec=MJPEG&qualitymode=Fixquality&quality=75&-bitrate"},
                  {"profileid=1&resolution=1280x1024", "profile.display_system=1 profile.resolution[1]=1",
                   "codec=MJPEG&resolution=1280x1024"}});
}

constexpr const char* kSensors[] = {"ov7740", "ov9710", "mt9v136", "mdin220", "ip2986", "hm1375"};
enum Sensor { kOv7740, kOv9710, kMt9v136, kMdin220, kIp2986, kHm1375 };
constexpr const char* kCodecs[] = {"MJPEG", "MPEG4", "H264"};
constexpr const char* kModes[] = {"CBR", "Fixquality"};
constexpr int kRates[] = {-1, 1, 2, 3, 5, 6, 8, 10, 12, 15, 25, 30};
// Four of each display system.
const std::vector<std::string> kResolutions = [] {
  std::istringstream words{
      "640x480 320x240 160x112 80x60 1280x1024 640x512 320x256 160x128 704x480 352x240 176x112 88x60 704x576 "
      "352x288 176x144 88x72 704x576 352x288 176x144 88x72 1024x768 512x384 256x192 128x96 640x480 320x240 "
      "160x112 80x60 1280x720 640x352 320x176 160x80 1280x960 640x480 320x240 160x112 1920x1080 960x540 "
      "480x270 240x128 1280x800 640x400 320x192 160x96"};
  return std::vector<std::string>{std::istream_iterator<std::string>{words}, {}};
}();

// A request; -1: not given.
struct Asked {
  int sensor, ds = 0, p = 1, c = -1, r = -1, f = -1, qm = -1;
  bool hasModes() const { return sensor == kOv7740 || sensor == kOv9710 || sensor == kHm1375; }
  bool isLarge() const { return sensor == kOv9710 || sensor == kHm1375; }
};

bool hasRate(const Asked& q) {
  const auto isOne = [&](std::initializer_list<int> rates) {
    return std::find(rates.begin(), rates.end(), q.f) != rates.end();
  };
  if (q.sensor == kMt9v136 && q.p == 1 && q.f < 5) return false;
  if (q.ds == 1 || q.ds == 5) return isOne({1, 2, 3, 5, 6, 10});
  if (q.ds == 3 || q.ds == 4 || q.ds == 6) return isOne({1, 2, 3, 5, 8, 12, 25});
  return isOne({1, 2, 3, 5, 6, 10, 15}) || (q.f == 30 && (q.isLarge() || (q.ds != 7 && q.ds != 8)));
}

bool fitsCodec(const Asked& q, const ProfileSettings& stored) {
  const bool isMjpeg = q.c == 0;
  if (q.ds == 1 && q.r < 0 && q.p == 1 && !isMjpeg && stored.resolution[1] == 0) return false;
  if (!isMjpeg) return q.p != 3 && (q.hasModes() || q.p != 4 || q.c == 1);
  if (q.p == 1 && (q.sensor == kMt9v136 || q.sensor == kMdin220)) return false;
  if (q.p == 4 || q.qm == 0) return false;
  if (q.p == 2 && (q.sensor == kOv7740 || q.sensor == kHm1375)) return false;
  return q.sensor != kOv9710 || q.p == 3;
}

bool fitsResolution(const Asked& q) {
  if (q.r == 3) return q.isLarge();
  if (q.r > 0) return true;
  if ((q.ds == 1 || q.ds == 5 || q.ds == 8) && q.p > 1) return false;
  if (q.ds == 1 && q.p == 1 && q.c > 0) return false;
  if (q.ds == 7 && q.sensor != kOv9710 && q.p > 1) return false;
  return !(q.sensor == kOv9710 && (q.p == 2 || q.p == 4)) && !(q.sensor == kHm1375 && q.p == 3);
}

// Whether it is accepted; the record is then what is stored.
bool judge(const Asked& q, ProfileSettings* record) {
  const ProfileSettings stored = *record;
  if (q.f >= 0 && !hasRate(q)) return false;
  if (q.c >= 0 && !fitsCodec(q, stored)) return false;
  if (q.r >= 0 && !fitsResolution(q)) return false;
  const bool becomesMjpeg = q.ds == 1 && q.c < 0 && q.p == 1 && q.r == 0;
  if (q.qm == 0 && (q.p == 3 || (q.c < 0 && (stored.codec[q.p] == 0 || becomesMjpeg)))) return false;
  if (q.sensor == kOv9710 && q.p == 3) {
    if (q.r == 0 && (q.f < 0 ? stored.frame_rate[3] : q.f) > 5) return false;
    if (q.r < 0 && stored.resolution[3] == 0 && q.f > 5) return false;
  }
  if (q.c >= 0) record->codec[q.p] = static_cast<std::uint8_t>(q.c);
  if (q.r >= 0) record->resolution[q.p] = static_cast<std::uint8_t>(q.r);
  if (q.f >= 0) record->frame_rate[q.p] = static_cast<std::uint8_t>(q.f);
  if (q.qm >= 0) record->quality_mode[q.p] = static_cast<std::uint8_t>(q.qm);
  if (std::memcmp(record, &stored, sizeof stored) == 0) return true;
  if (q.c == 0 && q.qm < 0) record->quality_mode[q.p] = 1;
  if (becomesMjpeg) record->codec[1] = 0;
  return true;
}

std::string queryOf(const Asked& q) {
  std::string query = "profileid=" + std::to_string(q.p);
  if (q.c >= 0) query += std::string{"&codec="} + kCodecs[q.c];
  if (q.r >= 0) query += "&resolution=" + kResolutions[static_cast<std::size_t>(4 * q.ds + q.r)];
  if (q.f >= 0) query += "&framerate=" + std::to_string(q.f);
  if (q.qm >= 0) query += std::string{"&qualitymode="} + kModes[q.qm];
  return query;
}

// The record is left as each request makes it, so that they meet one another's values.
void ask(const Asked& q) {
  std::vector<std::uint8_t>& bytes = scripted().records[static_cast<std::size_t>(RecordIndex::profile)];
  ProfileSettings expected;
  std::memcpy(&expected, bytes.data(), sizeof expected);
  Asked judged = q;
  if (!q.hasModes()) judged.qm = -1;
  const int status = judge(judged, &expected) ? 200 : 400;
  const Reply reply = request("video.cgi", queryOf(q));
  EXPECT_TRUE(reply.status == status && std::memcmp(&expected, bytes.data(), sizeof expected) == 0)
      << kSensors[q.sensor] << " display system " << q.ds << " " << queryOf(q) << " " << reply.body;
}

// Every combination of values, and with some left out those of a few frame rates.
void askAll(Asked q) {
  for (q.c = -1; q.c < 3; ++q.c)
    for (q.r = -1; q.r < 4; ++q.r)
      for (q.qm = -1; q.qm < (q.hasModes() ? 2 : 1); ++q.qm)
        for (const int rate : kRates) {
          const bool isWhole = q.c >= 0 && q.r >= 0 && q.qm >= 0;
          q.f = rate;
          if (isWhole || rate < 0 || rate == 5 || rate == 6 || rate == 30) ask(q);
        }
}

TEST(Video, AcceptsExactlyTheCombinationsThatFitTheSensorAndTheDisplaySystem) {
  for (Asked q{.sensor = kOv7740}; q.sensor <= kHm1375; ++q.sensor)
    for (q.ds = 0; q.ds <= 10; ++q.ds) {
      scripted().reset("product.sensor=" + std::string{kSensors[q.sensor]} +
                       " profile.display_system=" + std::to_string(q.ds));
      for (q.p = 1; q.p <= 4; ++q.p) askAll(q);
    }
}

// A list for all profiles and for each.
std::string lists(const std::string& all, const std::string& each, const std::string& values) {
  std::string lines = all + "=" + values;
  for (const char* i : {"1", "2", "3", "4"}) lines += "&" + each + i + "=" + values;
  return lines + "&";
}

TEST(StreamInfo, SaysEverythingInItsOrder) {
  const std::string bitRates = "64,128,256,384,512,768,1024,1536,2048";
  const std::string volumes = "0,10,20,30,40,50,60,70,80,90,100";
  const std::string reply =
      "videos=MJPEG,MPEG4,H264&codeclist1=MJPEG,MPEG4,H264&codeclist2=MPEG4,H264&codeclist3=MJPEG&codeclist4="
      "MPEG4,H264&audios=PCM,ADPCM,AAC&" +
      lists("resolutions", "resolutionlist", "640x480,320x240,160x112") +
      lists("framerates", "frameratelist", "1,2,3,5,6,10,15,30") +
      "qualitymodes=CBR,Fixquality&vbitrates=" + bitRates + "&vbitratelist1=" + bitRates +
      "&vbitratelist2=" + bitRates + "&vbitratelist3=&vbitratelist4=" + bitRates + "&" +
      lists("qualities", "qualitylist", "55,65,75,85,95") + "asamplerates=8&abitrates=128&micvol=" + volumes +
      "&cur_micvol=7&speakervol=" + volumes +
      "&cur_speakervol=10&vprofileformat=0.9&vprofilenum=4&vprofile1=MPEG4&vprofileurl1=/video/"
      "ACVS.cgi?profileid=1&vprofileres1=640x480&vprofile2=MPEG4&vprofileurl2=/video/"
      "ACVS.cgi?profileid=2&vprofileres2=320x240&vprofile3=MJPEG&vprofileurl3=/video/"
      "mjpg.cgi?profileid=3&vprofileres3=320x240&vprofile4=H264&vprofileurl4=/video/"
      "ACVS-H264.cgi?profileid=4&vprofileres4=320x240&aprofilenum=3&aprofile1=PCM&aprofileurl1=/audio/"
      "ACAS.cgi&aprofile2=ADPCM&aprofileurl2=/audio/ACAS-MSADPCM.cgi&aprofile3=AAC&aprofileurl3=/audio/"
      "ACAS-AAC.cgi&vban=2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-";
  const Endpoint info{
      "stream_info.cgi",
      "product.sensor=ov7740_tzm480 profile.codec[4]=2 audio.mic_volume=7 audio.speaker_volume=10", reply};
  info.accepts("");
  info.refuses("profileid=1 =");
  for (const char* sensor : {"mt9v136", "mdin220", "vicam", "ov9710b", ""})
    info.refuses("!", std::string{"product.sensor="} + sensor, 500);
  // The extra module serves every stream under a second path.
  info.accepts(
      {{"", "product.modules=one,myvelkor",
        "vprofileurl1=/video/ACVS.cgi?profileid=1&vDprofileurl1=/av2/ACVS.cgi?profileid=1&vprofileurl2=/"
        "video/ACVS.cgi?profileid=2&vDprofileurl2=/av2/ACVS.cgi?profileid=2&vprofileurl3=/video/"
        "mjpg.cgi?profileid=3&vDprofileurl3=/av2/mjpg.cgi?profileid=3&vprofileurl4=/video/"
        "ACVS-H264.cgi?profileid=4&vDprofileurl4=/av2/ACVS-H264.cgi?profileid=4&aprofileurl1=/audio/"
        "ACAS.cgi&aDprofileurl1=/av2/ACAS.cgi&aprofileurl2=/audio/ACAS-MSADPCM.cgi&aDprofileurl2=/av2/"
        "ACAS-MSADPCM.cgi&aprofileurl3=/audio/ACAS-AAC.cgi&aDprofileurl3=/av2/ACAS-AAC.cgi"}});
}

// A sensor, its state and lines that are offered then; and requests that video.cgi accepts (+) or refuses (-)
// apart from what is offered.
constexpr char kOffers[] = R"(
ov7740 product.has_h264=0 videos=MJPEG,MPEG4 codeclist1=MJPEG,MPEG4 codeclist2=MPEG4,H264 -2&codec=H264
ov7740 profile.display_system=2
       videos=MJPEG,MPEG4,H264 codeclist1=MPEG4,H264 +1&codec=MJPEG
ov9710 profile.display_system=1 resolutions=1280x1024,640x512,320x256,160x128
       resolutionlist1=1280x1024,640x512,320x256,160x128 resolutionlist2=640x512,320x256,160x128
       resolutionlist3=1280x1024,640x512,320x256,160x128 resolutionlist4=640x512,320x256,160x128
       framerates=1,2,3,5,10 frameratelist4=1,2,3,5,10 vbitratelist3=
       vbitratelist4=64,128,256,384,512,768,1024,1536,2048,3072,4096
       vban=1|MJPEG|-|-|-|-:2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-:2|-|1280x800|-|-|-:4|-|1280x800|-|-|-:3|-|1280x800|6,30|-|-
       +2&framerate=6 -3&resolution=1280x1024 +3&bitrate=64 +1&quality=0
ov9710 profile.display_system=8 framerates=1,2,3,5,10,15 +1&framerate=6 +1&framerate=30
ov9710_720p profile.display_system=7 framerates=1,2,3,5,6,10,15,30 resolutionlist4=640x352,320x176,160x80
       vban=1|MJPEG|-|-|-|-:2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-:2|-|1280x720|-|-|-:4|-|1280x720|-|-|-:3|-|1280x720|6,30|-|-
ip2986 profile.display_system=7 resolutionlist2=1280x720,640x352,320x176 framerates=1,2,3,5,10,15
       qualitymodes=CBR codeclist4=MPEG4,H264 vbitratelist2=64,128,256,384,512,768,1024,1536,2048,3072,4096 vban=
       -2&resolution=1280x720 +1&framerate=6 +1&qualitymode=Fixquality +2&codec=MJPEG -4&codec=H264 -2&bitrate=4096
hm1375 profile.display_system=8 resolutionlist1=1280x960,640x480,320x240,160x112
       resolutionlist2=640x480,320x240,160x112 resolutionlist3=640x480,320x240,160x112
       framerates=1,2,3,5,6,10,15,30 vban=
hm1375 profile.display_system=9 resolutionlist4=960x540,480x270,240x128 +2&resolution=1920x1080 +4&resolution=1920x1080
ip2986 profile.display_system=3 framerates=1,2,3,5,8,12,25
ip2986 profile.display_system=4 framerates=1,2,3,5,6,10,15,30 -1&framerate=6 +1&framerate=25
ip2986 profile.display_system=5 framerates=1,2,3,5,10 +1&framerate=6
ip2986 profile.display_system=6 framerates=1,2,3,5,8,12,25
)";

TEST(StreamInfo, OffersWhatVideoAcceptsButForTheDifferences) {
  std::istringstream words{kOffers};
  std::string state;
  std::string body;
  for (std::string word; words >> word;) {
    const bool isSensor = word.find('=') == word.npos;
    const bool isDifference = word.find_first_of("+-") == 0;
    if (isSensor || word.starts_with("product.") || word.starts_with("profile.")) {
      state = isSensor ? "product.sensor=" + word : state + " " + word;
      scripted().reset(state);
      body = "&" + request("stream_info.cgi", "").body + "&";
    } else if (isDifference) {
      EXPECT_EQ(request("video.cgi", "profileid=" + word.substr(1)).status, word[0] == '+' ? 200 : 400)
          << state << word;
    } else {
      EXPECT_NE(body.find("&" + word + "&"), body.npos) << state << ": " << word << " in " << body;
    }
  }
}

}  // namespace
}  // namespace camera::test
