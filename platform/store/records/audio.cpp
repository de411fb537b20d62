// Description of the record: the microphone's and speaker's settings record.
#include "platform/store/records/audio.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_BOUNDED(AudioSettings, mic_enable, 0, 1),
    CAMERA_BOUNDED(AudioSettings, mic_volume, 0, 10),
    CAMERA_RESERVED(AudioSettings, reserved0),
    CAMERA_BOUNDED(AudioSettings, speaker_enable, 0, 1),
    CAMERA_BOUNDED(AudioSettings, speaker_volume, 0, 10),
    CAMERA_RESERVED(AudioSettings, reserved1),
};

}  // namespace

constexpr RecordInfo audioRecord = describe::record<AudioSettings>("audio", kFields);

}  // namespace camera
