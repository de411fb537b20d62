// The status packages that the camera's daemons send to everyone, and how to listen for them.
#pragma once

#include <cstdint>

#include "platform/daemons/status_receiver.h"

namespace camera {

// Bits of a package's event word. kInputEvent and kOutputEvent are the bits of the first line; the further
// lines have the next bits.
enum StatusEvent : std::uint32_t {
  kMotionEvent = 0x1,     // its value is the amount
  kFlagsEvent = 0x2,      // only its flags are used
  kRecordingEvent = 0x4,  // its flags are 0 while recording runs
  kInputEvent = 0x10,
  kOutputEvent = 0x100,  // its value2 is the state
  kSoundEvent = 0x4000,  // its value is the level
  kSpeakerOccupiedEvent = 0x10000,
  kMicMutedEvent = 0x20000,
  kSoundLevelEvent = 0x800000,  // its value is the level
};

// The events whose packages have flags. notify.cgi ignores a package with none of them, such as one that only
// reports outputs.
inline constexpr std::uint32_t kEventsWithFlags = kMotionEvent | kFlagsEvent | kRecordingEvent |
                                                  0xF * kInputEvent | kSoundEvent | kSpeakerOccupiedEvent |
                                                  kMicMutedEvent | kSoundLevelEvent;

// Bits of the flags word.
enum StatusFlag : std::uint32_t {
  kPirFlag = 0x1,
  kStorageFullFlag = 0x10,
  kStorageFailedFlag = 0x20,
};

inline std::uint8_t lowByte(std::int32_t number) {
  return static_cast<std::uint8_t>(number);
}

// Calls take for each package with one of the events, until the time is over or take returns false. listen
// may return up to a second late, because a wait that has begun is not cut short.
template <class Take>
void listen(std::uint32_t events, int seconds, Take take) {
  StatusReceiver receiver;
  receiver.open();
  StatusPackage package{};
  while (receiver.secondsSinceOpen() < seconds) {
    if (receiver.wait(events, &package, std::chrono::seconds(1)) && !take(package)) return;
  }
}

}  // namespace camera
