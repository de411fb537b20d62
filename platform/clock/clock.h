// The camera's one clock, the system's plus the stored offset, and the time zone in which it is read.
#pragma once

#include <cstdint>

namespace camera {

struct ClockSettings;
class SettingsStore;
enum class StoreResult : int;

// Makes the stored time zone, with the stored daylight saving rules, the one in which this process tells
// local time. A zone that cannot be read leaves UTC.
void applyTimeZone();

// Seconds since 1970-01-01 00:00:00 UTC on the camera's clock; 64 bits on every platform. Without a readable
// offset it is the system's clock.
std::int64_t cameraTime();

// What the settings store's own functions are made of; systemTime is that of the host. None of them changes
// what the store remembers as this process's last read of a record.
StoreResult applyTimeZone(SettingsStore& store);
std::int64_t cameraTime(SettingsStore& store, std::int64_t systemTime);

// Fills the record with the stored one and, in its local date and time, the present ones in the stored zone.
StoreResult readClock(SettingsStore& store, std::int64_t systemTime, ClockSettings* record);

// Stores the offset with which the camera's clock shows the record's local date and time now. Of a time that
// the zone has twice it is the first; one that it skips counts on from before the change. kRefused for a date
// that no calendar has.
StoreResult setClock(SettingsStore& store, std::int64_t systemTime, const ClockSettings& record);

}  // namespace camera
