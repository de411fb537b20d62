// video.cgi and stream_info.cgi: how a profile is shown and changed, which combinations of values each sensor
// and display system accepts, and what they are offered.
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
       {"profileid=1&bitrate=4096&qualitymode=never", "product.sensor=ip2986", "bitrate=4096"},
       {"profileid=2&codec=MJPEG", "product.sensor=mdin220", "codec=MJPEG&-qualitymode&quality=75&-bitrate"},
       {"profileid=2&codec=H264", "product.sensor=mdin220 profile.codec[2]=0",
        "codec=H264&framerate=15&qualitymode=CBR&bitrate=512&-quality"}});
  kVideo.refuses(
      "! !profileid&codec=H264 profileid=0 profileid=5 profileid=+1 profileid=1&!resolution=640X480 "
      "profileid=1&!framerate=015 profileid=1&!quality=101 profileid=1&!qualitymode=cbr "
      "profileid=1&codec=H264&!colour=red");
  kVideo.refuses("profileid=1&!codec=H264 profileid=1&!codec=H265", "product.has_h264=0");
  // Which sensor it is counts only for a request that names a profile.
  kVideo.refuses("profileid=1 profileid=1&colour=red", "product.sensor=vicam", 500);
  kVideo.refuses("profileid=5 !profileid&colour=red", "product.sensor=vicam");
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

// By display system: the resolutions and the frame rates; * stands before those of fast sensors.
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

// Whether it is accepted; the record is then what is stored.
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

// The record is left as each request makes it, so that they meet one another's values.
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
  const bool isLimited = q.model.name == "ov9710" && q.p == 3;  // to a frame rate in a resolution
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

}  // namespace
}  // namespace camera::test
