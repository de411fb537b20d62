// speaker.cgi: the speaker and its volume.
#include "handlers/media/audio_switch.h"

namespace camera {

class SpeakerEndpoint final : public RecordEndpoint<AudioSettings> {
 public:
  SpeakerEndpoint()
      : RecordEndpoint(kAudioSwitchParams<&AudioSettings::speaker_enable, &AudioSettings::speaker_volume>,
                       &ProductInfo::has_speaker) {}
};

template InfCgilet* create<SpeakerEndpoint>();

}  // namespace camera
