// What is detected and reported: io.cgi, notify.cgi, env_sound_lv.cgi, event_log.cgi, action_ftp.cgi,
// action_mail.cgi, audio_detection.cgi and detection_push.cgi.
#include "tests/handlers/endpoint.h"
#include "tests/handlers/scripted_daemons.h"

namespace camera::test {
namespace {

const Endpoint kIo{
    .cgi = "io.cgi",
    .state = "product.input_count=2 product.output_count=1 io.inputs=0,1,1,1 io.outputs=1,0,0,1",
    .reply = "in1=off&out1=on&in2=on",
    .readsBack = false};

TEST(Io, ReportsOnForStateOneOnly) {
  using namespace std::string_literals;
  scripted().reset(kIo.state);
  daemons().answers = {{"get watchdog 616", "\0\0\0\0\2\0\0\0"s}, {"get watchdog 620", "\0\0\0\0\0\1\0\0"s}};
  EXPECT_EQ(request(kIo.cgi, "").body, "in1=off&out1=off&in2=off");
}

// A product with two inputs and one output, all its parts, and nothing going on.
const Endpoint kNotify{
    "notify.cgi",
    "product.input_count=2 product.output_count=1 host.name=door audio.speaker_enable=0 audio.mic_enable=1 "
    "ir.ir_led=1",
    "md1=off&mdv1=0&pir=off&recording=off&input1=off&input2=off&output1=off&vsignal=on&speaker=off&mic=on&"
    "irled=on&audio_detected=off&audio_detect_val=0&speaker_occupied=off&mic_muted=off&cameraname=door"};

TEST(Notify, TellsWhatThePackagesOfFourSecondsTold) {
  kNotify.accepts({
      {"", "package=0,0x1,0,42 package=1,0xA0 package=2,0x1,0,-7", "md1=on&mdv1=-7&input2=on"},
      {"", "package=3999,0x1,0,42", "md1=on&mdv1=42"},
      {"", "package=4000,0x1,0,42"},
      {"", "package=3500,0x2 package=4400,0x1,0,42", "md1=on&mdv1=42"},  // the last wait began in time
      {"", "package=0,0x2,0x31 package=1,0x4", "pir=on&recording=on"},
      {"", "package=0,0x4 package=1,0x4,1", "pir=on"},
      {"", "package=0,0x4,0x10 package=1,0x2,0x20", "pir=off&storagefail=on"},
      {"", "package=0,0x2,0x20 package=1,0x4,0x10", "pir=off&storagefull=on"},
      {"", "package=0,0x4000,0,261 package=1,0x20000,0,7",
       "audio_detected=on&audio_detect_val=5&mic_muted=on"},
      {"", "package=0,0x810000,0,-1", "audio_detect_val=255&speaker_occupied=on"},
      {"", "package=0,0xFFFFFFFF,0xFFFFFFFF,-1,1",
       "md1=on&mdv1=-1&pir=on&storagefail=on&recording=off&input1=on&input2=on&output1=on&audio_detected=on&"
       "audio_detect_val=255&speaker_occupied=on&mic_muted=on"},
  });
  EXPECT_EQ(daemons().mask, 0x8340F7U);
}

TEST(Notify, LeavesOutWhatTheProductDoesNotHave) {
  kNotify.accepts({{"", "product.has_speaker=0", "-speaker&-speaker_occupied"},
                   {"", "product=", "-input1&-input2&-output1&-speaker&-mic&-irled&-speaker_occupied"}});
  EXPECT_EQ(scripted().history({"get"}), "get product get host");
}

TEST(EnvSoundLevel, IsTheFirstReportOfTwoSeconds) {
  const Endpoint level{"env_sound_lv.cgi", "", "audio_detect_val=0"};
  level.accepts({{"", "package=10,0x4000,0,9 package=20,0x800001,0,300 package=21,0x800000,0,1",
                  "audio_detect_val=44"}});
  EXPECT_LT(daemons().clock, 1000) << "it listened on";
  level.accepts(
      {{"", "package=1999,0x800000,0,255", "audio_detect_val=255"}, {"", "package=2000,0x800000,0,255"}});
  EXPECT_EQ(daemons().mask, 0x800000U);
}

TEST(EventLog, KeepsTheLinesOfDetectionsAndMarksTheirKind) {
  scripted().reset();
  scripted().printed = {"1: by Motion Detection\n",
                        "by Sound Detection, by Digital Input\r\n",
                        "by Digital Input by Cold Thermal Detection\n",
                        "by motion detection\n",
                        "by Hot Thermal Detection, of a long",
                        " line\n",
                        "by Digital Input\n"};
  const std::string kept =
      "md 1: by Motion Detection&sd by Sound Detection, by Digital Input\r&tc by Digital Input by Cold "
      "Thermal Detection&th by Hot Thermal Detection, of a longdi by Digital Input";
  for (const char* query : {"", "anything=1&b=2"}) EXPECT_EQ(request("event_log.cgi", query).body, kept);
}

const Endpoint kFtp{
    "action_ftp.cgi", "ftp.enable=0 ftp.host=h ftp.pass=secret ftp.interval=10500 snapshot.ftp_enable=0",
    "enable=no&host=h&port=21&path=&prefix=&user=&pass=c2VjcmV0&passive=yes&interval=10", "set ftp"};
const Endpoint kMail{"action_mail.cgi",
                     "smtp.enable=0 smtp.sender=a@b.c smtp.to=d@e.f smtp.host=h smtp.pass=secret",
                     "enable=no&sender=a@b.c&to=d@e.f&host=h&port=25&user=&pass=c2VjcmV0", "set smtp"};
constexpr char kBoth[] = "set ftp set snapshot";

const std::string kEncoded = "pass=YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFh";  // thirty a

TEST(ActionFtp, NotifiesTheSnapshotSenderOfItsSwitchAndInterval) {
  kFtp.accepts("interval=10", "ftp.interval=10000", "");
  // 10.5 seconds were stored.
  kFtp.accepts("enable=yes interval=11 interval=10 enable=yes&interval=86400&passive=no", "", kBoth);
  kFtp.accepts("enable=yes", "snapshot.ftp_enable=1", kBoth);
  kFtp.accepts({{"passive=no&nobody=1", "", "passive=no", {}, "nobody"}});
  EXPECT_EQ(scripted().stored("snapshot.ftp_enable"), "0");
  kFtp.accepts("enable=no&interval=10", "ftp.enable=1", kBoth);
  EXPECT_EQ(scripted().stored("snapshot.ftp_enable") + scripted().stored("ftp.interval"), "010000");
  scripted().results = {{"set snapshot", kOvertaken}};
  EXPECT_EQ(request("action_ftp.cgi", "enable=yes").status, 200);
  EXPECT_EQ(scripted().stored("snapshot.ftp_enable"), "1") << "forgotten when the request was applied again";
}

TEST(ActionPassword, TravelsInBase64) {
  for (const Endpoint& endpoint : {kFtp, kMail}) {
    endpoint.accepts("pass= pass=c2VjcmV0 pass=cA==");
    endpoint.accepts({{"pass=fj8%2B", "", "pass=fj8+"}, {kEncoded}});
    endpoint.refuses("pass=cA pass=AA== pass=IA== pass=w6Q= pass=%00 " + kEncoded + "YQ==");
  }
  kMail.accepts(kEncoded);
  EXPECT_EQ(scripted().stored("smtp.pass"), std::string(30, 'a'));
}

TEST(AudioDetection, TakesOnlyItsWords) {
  const Endpoint sound{"audio_detection.cgi",
                       "audiodetection.enable=0 audiodetection.sensitivity=70 audiodetection.push=1",
                       "enable=no&sensitivity=70", "set audiodetection"};
  sound.accepts("enable=yes&sensitivity=90 enable=no&sensitivity=70");
  EXPECT_EQ(scripted().stored("audiodetection.push"), "1");
  sound.refuses("enable=YES enable=on enable= sensitivity=52 sensitivity=95 sensitivity=055 !push=no");
}

const Endpoint kPush{"detection_push.cgi",
                     "motiond.mbmask=00f0 motiond.sensitivity=40 gpio.pir=0 audiodetection.push=0",
                     "sound_enable=no&sound_sensitivity=70&sound_push=no&motion_enable=no&motion_sensitivity="
                     "40&motion_push=no&pir_enable=no&pir_sensitivity=50"};
constexpr char kMotionWritten[] = "set motiond";

TEST(DetectionPush, WatchesTheWholePictureWhenMotionIsSwitchedOn) {
  const std::pair<std::string, std::string> masks[] = {
      {"00f0", "FFFF"}, {"", ""}, {std::string(400, 'a'), std::string(300, 'F')}};
  for (const auto& [before, after] : masks) {
    const std::string state = "motiond.mbmask=" + before + " motiond.enable=";
    kPush.accepts("motion_enable=yes", state + "0", kMotionWritten);
    kPush.accepts("motion_enable=yes", state + "1", kMotionWritten);
    EXPECT_EQ(scripted().stored("motiond.mbmask"), after);
  }
}

}  // namespace
}  // namespace camera::test
