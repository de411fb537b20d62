// The camera's clock: the system's plus the stored offset, shown in the stored time zone.
#pragma once

#include <cstdint>

namespace camera {

struct ClockSettings;
class SettingsStore;
enum class StoreResult : int;

// Makes the stored time zone, with the stored daylight saving rules, the one of this process's local times.
// UTC if it cannot be read.
void applyTimeZone();

// Seconds since 1970-01-01 00:00:00 UTC on the camera's clock; the system's clock if the offset cannot be
// read.
std::int64_t cameraTime();

// The same over any store, with the time of the system's clock. Their reads do not count as this
// process's last read of a record.
StoreResult applyTimeZone(SettingsStore& store);
std::int64_t cameraTime(SettingsStore& store, std::int64_t systemTime);

// Fills the record with the stored one, and its local date and time with the present ones in the stored zone.
StoreResult readClock(SettingsStore& store, std::int64_t systemTime, ClockSettings* record);

// Stores the offset with which the camera's clock now shows the record's local date and time. A time that the
// zone has twice is the first of the two; one that it skips is counted as if the change came later. kRefused
// if there is no such date.
StoreResult setClock(SettingsStore& store, std::int64_t systemTime, const ClockSettings& record);

}  // namespace camera
