// What a status package says, as server-sent events.
#include "services/events/status_events.h"

#include <array>
#include <cstdio>

#include "handlers/events/status_packages.h"
#include "platform/clock/calendar.h"

namespace camera::events {
namespace {

constexpr int kLines = 4;

}  // namespace

std::vector<StatusEvent> eventsOf(const StatusPackage& package) {
  std::vector<StatusEvent> events;
  const auto add = [&events](bool isReported, std::string_view kind, int number, std::int32_t value) {
    if (isReported) events.push_back({kind, number, value});
  };
  const auto has = [&package](std::uint32_t bits) { return (package.event & bits) != 0; };
  const std::uint32_t flags = has(kEventsWithFlags) ? package.flags : 0;

  add(has(kMotionEvent), "md", 1, package.value);
  add((flags & kPirFlag) != 0, "pir", 0, 1);
  add(has(kRecordingEvent), "recording", 0, package.flags == 0 ? 1 : 0);
  add((flags & kStorageFullFlag) != 0, "storagefull", 0, 1);
  add((flags & kStorageFailedFlag) != 0, "storagefail", 0, 1);
  for (int i = 0; i < kLines; ++i) add(has(kInputEvent << i), "input", i + 1, 1);
  for (int i = 0; i < kLines; ++i) add(has(kOutputEvent << i), "output", i + 1, lowByte(package.value2));
  add(has(kSoundEvent), "audio_detected", 0, lowByte(package.value));
  add(has(kSoundLevelEvent), "audio_detect_val", 0, lowByte(package.value));
  add(has(kSpeakerOccupiedEvent), "speaker_occupied", 0, 1);
  add(has(kMicMutedEvent), "mic_muted", 0, 1);
  return events;
}

std::string timeText(std::int64_t milliseconds) {
  const CivilTime time = civilTime(milliseconds / 1000);
  std::array<char, 80> text;
  (void)std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03d", time.year, time.month,
                      time.day, time.hour, time.minute, time.second, static_cast<int>(milliseconds % 1000));
  return text.data();
}

std::string streamText(std::uint64_t id, std::string_view time, const StatusEvent& event) {
  std::string text = "id: " + std::to_string(id) + "\nevent: status\ndata: {\"time\":\"";
  text.append(time).append("\",\"kind\":\"").append(event.kind).append("\"");
  if (event.number > 0) text += ",\"number\":" + std::to_string(event.number);
  return text + ",\"value\":" + std::to_string(event.value) + "}\n\n";
}

}  // namespace camera::events
