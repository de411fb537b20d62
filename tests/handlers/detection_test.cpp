// audio_detection.cgi and detection_push.cgi: whole words against leading digits, and what is stored beside
// what was given.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

TEST(AudioDetection, TakesOnlyItsWords) {
  const Endpoint sound{.cgi = "audio_detection.cgi",
                       .state = "audiodetection.enable=0 audiodetection.sensitivity=70 audiodetection.push=1",
                       .reply = "enable=no&sensitivity=70",
                       .writes = "set audiodetection 0"};
  sound.accepts({{"enable=yes&sensitivity=90"}, {"enable=no&sensitivity=70"}});
  EXPECT_EQ(scripted().stored("audiodetection.push"), "1");
  sound.refuses("enable=YES enable=on enable= sensitivity=52 sensitivity=95 sensitivity=055 !push=no");
}

const Endpoint kPush{.cgi = "detection_push.cgi",
                     .state = "motiond.mbmask=00f0 motiond.sensitivity=40 gpio.pir=0 audiodetection.push=0",
                     .reply =
                         "sound_enable=no&sound_sensitivity=70&sound_push=no&motion_enable=no&"
                         "motion_sensitivity=40&motion_push=no&pir_enable=no&pir_sensitivity=50"};
constexpr char kSound[] = "set audiodetection 0";
constexpr char kMotion[] = "set motiond 1";

TEST(DetectionPush, WritesOnlyWhatItChanged) {
  kPush.accepts({{.query = "sound_enable=yes&motion_enable=no", .writes = kSound},
                 {"sound_sensitivity=55abc", "", "sound_sensitivity=55", kSound},
                 {"motion_sensitivity=abc", "", "motion_sensitivity=0", kMotion},
                 {"pir_sensitivity=+50", "", "pir_sensitivity=0", kMotion},
                 {.query = "sound_sensitivity=50&motion_push=yes&pir_enable=yes&pir_sensitivity=100",
                  .writes = "set audiodetection 0 set motiond 1 set gpio 1"},
                 {"pir_enable=a&pir_sensitivity=30&motion_sensitivity=100", "product.has_pir=0",
                  "motion_sensitivity=100", kMotion},
                 {"", "product.has_pir=0", "-pir_enable&-pir_sensitivity"}});
  kPush.refuses(
      "sound_sensitivity=55%00 sound_sensitivity=52 sound_sensitivity=45 sound_sensitivity=95 "
      "sound_sensitivity=99999999999 "
      "motion_sensitivity=-1 motion_sensitivity=101 pir_sensitivity=30 sound_enable= sound_push=1 "
      "motion_enable=Yes motion_push=yes&!mbmask=00 sound_push=yes&!pir_enable=on");
}

TEST(DetectionPush, WatchesTheWholePictureWhenMotionIsSwitchedOn) {
  const std::pair<std::string, std::string> masks[] = {
      {"00f0", "FFFF"}, {"", ""}, {std::string(400, 'a'), std::string(300, 'F')}};
  for (const auto& [before, after] : masks) {
    const std::string state = "motiond.mbmask=" + before + " motiond.enable=";
    kPush.accepts({{.query = "motion_enable=yes", .state = state + "0", .writes = kMotion},
                   {"motion_enable=yes", state + "1", "", kMotion}});
    EXPECT_EQ(scripted().stored("motiond.mbmask"), after);
  }
}

}  // namespace
}  // namespace camera::test
