// audio.cgi: the camera's three audio profiles, which cannot be changed.
#include "handlers/endpoint.h"

namespace camera {
namespace {

constexpr const char* kCodecs[] = {"PCM", "ADPCM", "AAC"};
constexpr const char* kSampleRates[] = {"8"};
constexpr const char* kBitRates[] = {"128", "32", "16"};

// Profile i has entry i - 1 of kCodecs and of kBitRates.
struct AudioProfile {
  std::int32_t number = 0;
  std::int32_t codec = -1;  // -1: not given
  std::int32_t sampleRate = 0;
  std::int32_t channels = 1;
  std::int32_t bitRate = -1;
};

constexpr auto kParams =
    paramRows<AudioProfile>(integerParam<&AudioProfile::number>("profileid", 1, 3).required(),
                            choiceParam<&AudioProfile::codec>("codec", kCodecs),
                            choiceParam<&AudioProfile::sampleRate>("samplerate", kSampleRates),
                            integerParam<&AudioProfile::channels>("channel", 1, 1),
                            choiceParam<&AudioProfile::bitRate>("bitrate", kBitRates));

}  // namespace

class AudioEndpoint final : public StateEndpoint<kParams, Takes::kCommand> {
  int check(AudioProfile& wanted) override {
    const int own = wanted.number - 1;
    if (given("codec") && wanted.codec != own) return refuse("codec", kCodecs[own]);
    if (given("bitrate") && wanted.bitRate != own) return refuse("bitrate", kBitRates[own]);
    wanted.codec = wanted.bitRate = own;
    return 200;
  }

  int carryOut(AudioProfile& /*wanted*/) override { return 200; }
};

template <>
const Api kApi<AudioEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPicture,
     .summary = "The three audio profiles of the camera's streams, which cannot be changed.",
     .dependent = "codec bitrate",
     .params = {{"profileid", "The audio profile."},
                {"codec", "The expected codec; profiles 1, 2 and 3 have PCM, ADPCM and AAC."},
                {"samplerate", "The expected sample rate.", "kHz"},
                {"channel", "The expected number of channels."},
                {"bitrate", "The expected bit rate; profiles 1, 2 and 3 have 128, 32 and 16.", "kbit/s"}}});
template struct EndpointOf<AudioEndpoint>;

}  // namespace camera
