// mic.cgi: the microphone and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {

class MicEndpoint final : public RecordEndpoint<AudioSettings> {
 public:
  MicEndpoint()
      : RecordEndpoint(kAudioSwitchParams<&AudioSettings::mic_enable, &AudioSettings::mic_volume>,
                       &ProductInfo::has_mic) {}
};

template InfCgilet* create<MicEndpoint>();

}  // namespace camera
