// speaker.cgi: the speaker and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {
namespace {

constexpr auto kParams = audioSwitchParams<&AudioSettings::speaker_enable, &AudioSettings::speaker_volume>();

}  // namespace

class SpeakerEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_speaker> {};

template struct EndpointOf<SpeakerEndpoint>;

}  // namespace camera
