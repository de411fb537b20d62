// speaker.cgi: the speaker and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {

class SpeakerCgilet final : public RecordEndpoint<_audio_setting, 0> {
 public:
  SpeakerCgilet()
      : RecordEndpoint(kAudioSwitchParams<&_audio_setting::speaker_enable, &_audio_setting::speaker_volume>,
                       &PIB::has_speaker) {}
};

template InfCgilet* create<SpeakerCgilet>();

}  // namespace camera
