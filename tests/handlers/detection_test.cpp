// motion.cgi, audio_detection.cgi and detection_push.cgi: what the mask must be, when detection can be on,
// whole words against leading digits, and what is stored beside what was given.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kMotion{"motion.cgi", "motiond.mbmask=0f00 motiond.sensitivity=50 motiond.pir_sensitivity=50",
                       "enable=no&mbmask=0f00&sensitivity=50&pir=no&pir_sensitivity=50",
                       "set motiond 1 set gpio 1"};

TEST(Motion, TakesItsFiveParameters) {
  kMotion.accepts(
      "enable=yes sensitivity=0 pir_sensitivity=100 "
      "enable=no&mbmask=0f00&sensitivity=50&pir=no&pir_sensitivity=50");
  kMotion.accepts({{"mbmask=00fA&sensitivity=100", "", "mbmask=00fA&sensitivity=100"},
                   {"pir=yes&pir_sensitivity=0", "", "pir=yes&pir_sensitivity=0"}});
  kMotion.refuses(
      "enable=on mbmask=000 mbmask=00000 mbmask=000g mbmask= sensitivity=101 sensitivity=-1 pir=maybe "
      "pir_sensitivity=30 pir_sensitivity=150 "
      "enable=yes&mbmask=00ff&sensitivity=1&pir=yes&pir_sensitivity=0&!colour=red");
  kMotion.refuses("sensitivity=7&!pir_sensitivity sensitivity=7&!pir_sensitivity=1",
                  "motiond.pir_sensitivity=30");
}

TEST(Motion, IsOnOnlyWhereItWatchesSomethingAndCan) {
  kMotion.accepts(
      {{"enable=yes&mbmask=0001", "motiond.mbmask=0000", "enable=yes&mbmask=0001"},
       {"enable=no&mbmask=0000", "motiond.enable=1 profile.display_system=1", "enable=no&mbmask=0000"},
       {"sensitivity=7", "motiond.enable=1", "sensitivity=7"},
       {"enable=yes", "profile.display_system=2"}});
  kMotion.refuses("enable=yes&!mbmask enable=yes&!mbmask=0000", "motiond.mbmask=0000");
  kMotion.refuses("!mbmask=0000 !mbmask=0000&enable=yes", "motiond.enable=1");
  kMotion.refuses("sensitivity=7&!enable pir=yes&!enable", "motiond.enable=1 profile.display_system=1");
  kMotion.refuses("enable=yes&!mbmask", "motiond.mbmask=");
}

TEST(Motion, WithoutASensorPirIsKnownAndIgnored) {
  const char* kNone = "product.has_pir=0";
  kMotion.accepts(
      {{"", kNone, "-pir"}, {"pir=maybe", kNone, ""}, {"pir=yes&sensitivity=1", kNone, "sensitivity=1"}});
}

TEST(AudioDetection, TakesOnlyItsWords) {
  const Endpoint sound{"audio_detection.cgi",
                       "audiodetection.enable=0 audiodetection.sensitivity=70 audiodetection.push=1",
                       "enable=no&sensitivity=70", "set audiodetection 0"};
  sound.accepts("enable=yes&sensitivity=90 enable=no&sensitivity=70");
  EXPECT_EQ(scripted().stored("audiodetection.push"), "1");
  sound.refuses("enable=YES enable=on enable= sensitivity=52 sensitivity=95 sensitivity=055 !push=no");
}

const Endpoint kPush{"detection_push.cgi",
                     "motiond.mbmask=00f0 motiond.sensitivity=40 gpio.pir=0 audiodetection.push=0",
                     "sound_enable=no&sound_sensitivity=70&sound_push=no&motion_enable=no&motion_sensitivity="
                     "40&motion_push=no&pir_enable=no&pir_sensitivity=50"};
constexpr char kSoundd[] = "set audiodetection 0";
constexpr char kMotiond[] = "set motiond 1";

TEST(DetectionPush, WritesOnlyWhatItChanged) {
  kPush.accepts("sound_enable=yes&motion_enable=no", "", kSoundd);
  kPush.accepts("sound_sensitivity=50&motion_push=yes&pir_enable=yes&pir_sensitivity=100", "",
                "set audiodetection 0 set motiond 1 set gpio 1");
  kPush.accepts({{"sound_sensitivity=55abc", "", "sound_sensitivity=55", kSoundd},
                 {"motion_sensitivity=abc", "", "motion_sensitivity=0", kMotiond},
                 {"pir_sensitivity=+50", "", "pir_sensitivity=0", kMotiond},
                 {"pir_enable=a&pir_sensitivity=30&motion_sensitivity=100", "product.has_pir=0",
                  "motion_sensitivity=100", kMotiond},
                 {"", "product.has_pir=0", "-pir_enable&-pir_sensitivity"}});
  kPush.refuses(
      "sound_sensitivity=55%00 sound_sensitivity=52 sound_sensitivity=45 sound_sensitivity=95 "
      "sound_sensitivity=99999999999 motion_sensitivity=-1 motion_sensitivity=101 pir_sensitivity=30 "
      "sound_enable= sound_push=1 motion_enable=Yes motion_push=yes&!mbmask=00 "
      "sound_push=yes&!pir_enable=on");
}

TEST(DetectionPush, WatchesTheWholePictureWhenMotionIsSwitchedOn) {
  const std::pair<std::string, std::string> masks[] = {
      {"00f0", "FFFF"}, {"", ""}, {std::string(400, 'a'), std::string(300, 'F')}};
  for (const auto& [before, after] : masks) {
    const std::string state = "motiond.mbmask=" + before + " motiond.enable=";
    kPush.accepts("motion_enable=yes", state + "0", kMotiond);
    kPush.accepts("motion_enable=yes", state + "1", kMotiond);
    EXPECT_EQ(scripted().stored("motiond.mbmask"), after);
  }
}

}  // namespace
}  // namespace camera::test
