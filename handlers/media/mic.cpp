// mic.cgi: the microphone and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {
namespace {

constexpr auto kParams = audioSwitchParams<&AudioSettings::mic_enable, &AudioSettings::mic_volume>();

}  // namespace

class MicEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_mic> {};

template struct EndpointOf<MicEndpoint>;

}  // namespace camera
