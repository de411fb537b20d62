// mic.cgi: the microphone and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {
namespace {

constexpr auto kParams = audioSwitchParams<&AudioSettings::mic_enable, &AudioSettings::mic_volume>();

}  // namespace

class MicEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_mic> {};

template <>
const Api kApi<MicEndpoint> = describes<kParams>({.subsystem = Subsystem::kPicture,
                                                  .summary = "The camera's microphone.",
                                                  .records = "`audio`",
                                                  .feature = &ProductInfo::has_mic,
                                                  .params = {{"enable", "Whether the microphone is on."},
                                                             {"volume", "The volume.", "%"}},
                                                  .state = factoryState<AudioSettings>});
template struct EndpointOf<MicEndpoint>;

}  // namespace camera
