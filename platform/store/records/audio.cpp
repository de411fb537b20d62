// Description of the record: the microphone's and speaker's settings record.
#include "platform/store/records/audio.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _audio_setting kDefaults{.mic_enable = 1,
                                   .mic_volume = 5,
                                   .reserved0 = {},
                                   .speaker_enable = 1,
                                   .speaker_volume = 5,
                                   .reserved1 = {}};

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_audio_setting, mic_enable, 0, 1),
    CAMERA_BOUNDED(_audio_setting, mic_volume, 0, 10),
    CAMERA_RESERVED(_audio_setting, reserved0),
    CAMERA_BOUNDED(_audio_setting, speaker_enable, 0, 1),
    CAMERA_BOUNDED(_audio_setting, speaker_volume, 0, 10),
    CAMERA_RESERVED(_audio_setting, reserved1),
};

}  // namespace

constexpr RecordInfo audioRecord = describe::record("audio", kDefaults, kFields);

}  // namespace camera
