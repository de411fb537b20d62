// audio_detection.cgi: whether the camera listens for sounds, and how sensitively.
#include "handlers/endpoint.h"
#include "platform/store/records/audiodetection.h"

namespace camera {
namespace {

constexpr const char* kSensitivities[] = {"50", "55", "60", "65", "70", "75", "80", "85", "90"};

constexpr auto kParams = paramRows<_audio_detection_setting>(
    choiceParam<&_audio_detection_setting::enable>("enable", kNoYes),
    choiceParam<&_audio_detection_setting::sensitivity>("sensitivity", kSensitivities).storingNumber());

}  // namespace

class AudioDetectionCgilet final : public RecordEndpoint<_audio_detection_setting, 0> {
 public:
  AudioDetectionCgilet() : RecordEndpoint(kParams) {}
};

template InfCgilet* create<AudioDetectionCgilet>();

}  // namespace camera
