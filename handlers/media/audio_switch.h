// The parameters of the microphone and of the speaker: a switch and a volume in the audio record.
#pragma once

#include "handlers/endpoint.h"
#include "platform/store/records/audio.h"

namespace camera {

inline constexpr const char* kVolumes[] = {"0", "10", "20", "30", "40", "50", "60", "70", "80", "90", "100"};

template <auto kEnable, auto kVolume>
constexpr auto audioSwitchParams() {
  return paramRows<AudioSettings>(choiceParam<kEnable>("enable", kNoYes),
                                  choiceParam<kVolume>("volume", kVolumes));
}

}  // namespace camera
