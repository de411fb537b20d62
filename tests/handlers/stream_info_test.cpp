// stream_info.cgi: what it offers on each sensor and display system.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

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
ov7740 product.has_h264=2 profile.display_system=2
       videos=MJPEG,MPEG4,H264 codeclist1=MPEG4,H264 +1&codec=MJPEG -1&codec=H264
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
