// What is seen and heard: audio.cgi, mic.cgi, speaker.cgi, rtspurl.cgi, stream_auth.cgi, icr.cgi, irled.cgi,
// privacy.cgi and timestamp.cgi.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kAudio{"audio.cgi", "", "profileid=2&codec=ADPCM&samplerate=8&channel=1&bitrate=32", "",
                      "profileid=2"};

TEST(Audio, AnswersAProfileAndTakesNothingThatIsNotItsOwn) {
  kAudio.accepts({{"profileid=1", "", "profileid=1&codec=PCM&samplerate=8&channel=1&bitrate=128"},
                  {"profileid=2", "", ""},
                  {"profileid=3&codec=AAC&bitrate=16&samplerate=8&channel=1", "", ""}});
  kAudio.refuses(
      "! !profileid&codec=PCM profileid=0 profileid=4 profileid=1&!codec=AAC profileid=1&!codec=pcm "
      "profileid=2&!bitrate=16 profileid=2&!channel=2 profileid=2&!samplerate=16 profileid=2&!volume=1");
}

const Endpoint kMic{"mic.cgi", "audio.mic_enable=0 audio.mic_volume=5 audio.speaker_volume=1",
                    "enable=no&volume=50", "set audio"};
const Endpoint kSpeaker{"speaker.cgi", "audio.speaker_enable=1 audio.speaker_volume=10 audio.mic_volume=1",
                        "enable=yes&volume=100", "set audio"};

TEST(AudioSwitch, TakesASwitchAndAVolumeInTens) {
  kMic.accepts("enable=yes volume=0 enable=no");
  kMic.accepts({{"volume=100&enable=yes", "", "enable=yes&volume=100"}});
  kSpeaker.accepts("enable=no volume=90");
  kMic.refuses("enable=on volume=55 volume=110 volume= volume=050 enable=yes&volume=10&!level=1");
  kMic.refuses("! enable=yes", "product.has_mic=0", 404);
  kSpeaker.refuses("! volume=90", "product.has_speaker=0", 404);
}

const Endpoint kRtspUrl{"rtspurl.cgi",
                        "rtspsvr.urlentry[0]=one rtspsvr.urlentry[1]=two rtspsvr.urlentry[3]=four",
                        "profileid=2&urlentry=two", "set rtspsvr", "profileid=2"};

TEST(RtspUrl, ChangesThePathOfTheProfileThatItNames) {
  kRtspUrl.accepts("profileid=2 profileid=1&urlentry=a profileid=2&urlentry=live_2-x.mp4.ab");
  kRtspUrl.accepts({{"profileid=4", "", "profileid=4&urlentry=four"}, {"profileid=2&urlentry=two", "", ""}});
  kRtspUrl.refuses(
      "! !profileid&urlentry=a profileid=0 profileid=5 profileid=2&!urlentry= profileid=2&!urlentry=a/b "
      "profileid=2&!urlentry=sixteen_letters_ profileid=2&urlentry=a&!path=b");
}

const Endpoint kStreamAuth{"stream_auth.cgi", "httpsvr.livevideo=0 httpsvr.snapshoturl=1",
                           "livevideo=off&snapshoturl=on", "set httpsvr"};

TEST(StreamAuth, PassesOverUnknownNamesUpToTwoParameters) {
  kStreamAuth.accepts({{"livevideo=on"},
                       {"snapshoturl=off&livevideo=on", "", "livevideo=on&snapshoturl=off"},
                       {"livevideo=on&colour=red", "", "livevideo=on"},
                       {"a=1&b=2", "", ""}});
  kStreamAuth.refuses("snapshoturl=yes livevideo=on&!colour=red&snapshoturl=off !a=1&b=2&c=3");
}

const Endpoint kIcr{"icr.cgi", "ir.icr_mode=0 ir.ir_led=1", "mode=auto", "set ir"};
const Endpoint kLed{"irled.cgi", "ir.icr_mode=1 ir.ir_led=0", "mode=off", "set ir"};

TEST(DayNight, TheLedsFollowAFixedMode) {
  const std::pair<const char*, const char*> rows[] = {
      {"auto", "0 1"}, {"manual", "1 1"}, {"day", "2 0"}, {"night", "3 1"}};
  for (const auto& [mode, stored] : rows) {
    kIcr.accepts(std::string{"mode="} + mode);
    EXPECT_EQ(scripted().stored("ir.icr_mode") + " " + scripted().stored("ir.ir_led"), stored) << mode;
  }
  kIcr.accepts({{"mode=day", "ir.icr_mode=2"}});  // the LEDs do not match, and nothing is written
  kIcr.refuses("mode=Day mode= !led=on mode=day&!led=on");
  kIcr.refuses("! mode=day", "product.has_icr=0", 404);
}

TEST(DayNight, TheLedsAreSetByHandWhileTheSwitchIsManual) {
  kLed.accepts("mode=on mode=off");
  kLed.refuses("mode=maybe mode=on&!icr=day");
  for (const char* mode : {"ir.icr_mode=0", "ir.icr_mode=2", "ir.icr_mode=3"})
    kLed.refuses("mode=on mode=off", mode);
  kLed.refuses("! mode=on", "product.has_irled=0", 404);
}

const Endpoint kPrivacy{"privacy.cgi", "", "enable=no&manual=off", "set privacy"};
const Endpoint kTimeStamp{"timestamp.cgi", "osd.label=door", "enable=off&showtime=off&label=door", "set osd"};

TEST(Picture, PrivacyTakesTwoSwitchesWithWordsOfTheirOwn) {
  kPrivacy.accepts("manual=on enable=yes enable=yes&manual=on enable=no&manual=off");
  kPrivacy.refuses("enable=on manual=yes enable=yes&manual=on&!colour=red");
  kPrivacy.refuses("! enable=yes", "product.has_privacy=0", 404);
}

TEST(Picture, TheLabelIsAnyTextThatTheRecordCanHold) {
  const std::string longest(30, 'x');
  kTimeStamp.accepts("enable=on showtime=on&label=");
  kTimeStamp.accepts({{"label=" + longest},
                      {"label=%c3%a9+%3d%22%0a", "", "label=\xC3\xA9 =\"%0A"},
                      {"enable=off&label=door", "", ""}});
  kTimeStamp.refuses("enable=yes showtime=1 !label=x" + longest + "&enable=on label=a%00b colour=red");
}

}  // namespace
}  // namespace camera::test
