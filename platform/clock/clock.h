// The camera's clock: the system's plus the stored offset, shown in the stored time zone.
#pragma once

#include <cstdint>

namespace camera {

struct ClockSettings;
class SettingsStore;
enum class StoreResult : int;

// Makes this process use the stored time zone and daylight saving rules for local times. It uses UTC if they
// cannot be read.
void applyTimeZone();

// Seconds since 1970-01-01 00:00:00 UTC on the camera's clock; the system's clock if the offset cannot be
// read.
std::int64_t cameraTime();

// The same for any store, given the time of the system's clock. Their reads do not count as this process's
// last read of a record.
StoreResult applyTimeZone(SettingsStore& store);
std::int64_t cameraTime(SettingsStore& store, std::int64_t systemTime);

// Fills the record with the stored one, and its date and time with the present local ones.
StoreResult readClock(SettingsStore& store, std::int64_t systemTime, ClockSettings* record);

// Sets the camera's clock to the record's local date and time, by storing the offset. A time that occurs
// twice means the first of the two; a skipped time has the offset from before the change. kRefused if there
// is no such date.
StoreResult setClock(SettingsStore& store, std::int64_t systemTime, const ClockSettings& record);

}  // namespace camera
