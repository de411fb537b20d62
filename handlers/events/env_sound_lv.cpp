// env_sound_lv.cgi: the sound level at the camera now.
#include "handlers/endpoint.h"
#include "handlers/events/status_packages.h"

namespace camera {
namespace {

constexpr int kListeningSeconds = 2;

}  // namespace

class EnvSoundLevelEndpoint final : public ReadOnlyEndpoint {
  int reply() override {
    std::uint8_t level = 0;
    listen(kSoundLevelEvent, kListeningSeconds, [&level](const StatusPackage& package) {
      level = lowByte(package.value);
      return false;
    });
    pair("audio_detect_val", level);
    return 200;
  }
};

template <>
const Api kApi<EnvSoundLevelEndpoint> = {
    .subsystem = Subsystem::kEvents,
    .summary = "The sound level at the camera.",
    .reply = {{"audio_detect_val", ApiType::kNumber,
               "The next reported level, 0 to 255; 0 if none is reported within two seconds."}}};
template struct EndpointOf<EnvSoundLevelEndpoint>;

}  // namespace camera
