// audio_detection.cgi: sound detection and its sensitivity.
#include "handlers/endpoint.h"
#include "platform/store/records/audiodetection.h"

namespace camera {
namespace {

constexpr const char* kSensitivities[] = {"50", "55", "60", "65", "70", "75", "80", "85", "90"};

constexpr auto kParams = paramRows<AudioDetectionSettings>(
    choiceParam<&AudioDetectionSettings::enable>("enable", kNoYes),
    choiceParam<&AudioDetectionSettings::sensitivity>("sensitivity", kSensitivities).storingNumber());

}  // namespace

class AudioDetectionEndpoint final : public RecordEndpoint<kParams> {};

template <>
const Api kApi<AudioDetectionEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kEvents,
                        .summary = "Sound detection.",
                        .records = "`audiodetection`",
                        .params = {{"enable", "Switches the detection of sounds."},
                                   {"sensitivity", "The sensitivity to sounds."}},
                        .state = factoryState<AudioDetectionSettings>});
template struct EndpointOf<AudioDetectionEndpoint>;

}  // namespace camera
