// audio.cgi, mic.cgi and speaker.cgi: the fixed profiles, and a switch and a volume of the part that is
// there.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kAudio{.cgi = "audio.cgi",
                      .reply = "profileid=2&codec=ADPCM&samplerate=8&channel=1&bitrate=32",
                      .key = "profileid=2"};

TEST(Audio, AnswersAProfileAndTakesNothingThatIsNotItsOwn) {
  kAudio.accepts({{"profileid=1", "", "profileid=1&codec=PCM&samplerate=8&channel=1&bitrate=128"},
                  {"profileid=2", "", ""},
                  {"profileid=3&codec=AAC&bitrate=16&samplerate=8&channel=1", "", ""}});
  kAudio.refuses(
      "! !profileid&codec=PCM profileid=0 profileid=4 profileid=1&!codec=AAC profileid=1&!codec=pcm "
      "profileid=2&!bitrate=16 profileid=2&!channel=2 profileid=2&!samplerate=16 profileid=2&!volume=1");
}

const Endpoint kMic{.cgi = "mic.cgi",
                    .state = "audio.mic_enable=0 audio.mic_volume=5 audio.speaker_volume=1",
                    .reply = "enable=no&volume=50",
                    .writes = "set audio 0"};
const Endpoint kSpeaker{.cgi = "speaker.cgi",
                        .state = "audio.speaker_enable=1 audio.speaker_volume=10 audio.mic_volume=1",
                        .reply = "enable=yes&volume=100",
                        .writes = "set audio 0"};

TEST(AudioSwitch, TakesASwitchAndAVolumeInTens) {
  kMic.accepts(
      {{"enable=yes"}, {"volume=0"}, {"volume=100&enable=yes", "", "enable=yes&volume=100"}, {"enable=no"}});
  kSpeaker.accepts({{"enable=no"}, {"volume=90"}});
  kMic.refuses("enable=on volume=55 volume=110 volume= volume=050 enable=yes&volume=10&!level=1");
  kMic.refuses("! enable=yes", "product.has_mic=0", 404);
  kSpeaker.refuses("! volume=90", "product.has_speaker=2", 404);
}

}  // namespace
}  // namespace camera::test
