// mic.cgi: the microphone and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {

class MicCgilet final : public RecordEndpoint<_audio_setting, 0> {
 public:
  MicCgilet()
      : RecordEndpoint(kAudioSwitchParams<&_audio_setting::mic_enable, &_audio_setting::mic_volume>,
                       &PIB::has_mic) {}
};

template InfCgilet* create<MicCgilet>();

}  // namespace camera
