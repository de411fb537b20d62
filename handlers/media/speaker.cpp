// speaker.cgi: the speaker and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {
namespace {

constexpr auto kParams = audioSwitchParams<&AudioSettings::speaker_enable, &AudioSettings::speaker_volume>();

}  // namespace

class SpeakerEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_speaker> {};

template <>
const Api kApi<SpeakerEndpoint> = describes<kParams>({.subsystem = Subsystem::kPicture,
                                                      .summary = "The camera's speaker.",
                                                      .records = "`audio`",
                                                      .feature = &ProductInfo::has_speaker,
                                                      .params = {{"enable", "Whether the speaker is on."},
                                                                 {"volume", "The volume.", "%"}},
                                                      .state = factoryState<AudioSettings>});
template struct EndpointOf<SpeakerEndpoint>;

}  // namespace camera
