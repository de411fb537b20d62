// Reads and sets the camera's clock, and applies the stored time zone.
#include "platform/clock/clock.h"

#include <algorithm>
#include <iterator>

#include "platform/clock/calendar.h"
#include "platform/clock/time_zones.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/tzone.h"
#include "platform/store/settings_store.h"

namespace camera {
namespace {

constexpr std::int64_t kDay = 86400;

// UTC until one is applied.
LocalZone appliedZone{};

std::int64_t offsetOf(const ClockSettings& setting) {
  return setting.offset_days * kDay + setting.offset_seconds;
}

std::int64_t zoneOffset(std::int64_t instant) {
  return offsetAt(appliedZone, instant);
}

// The instant of a local time, which is given in seconds as if it were UTC. If the local time occurs twice,
// this is the earlier instant, that of the larger offset. If it is skipped, the smaller offset applies, as it
// does before the change.
std::int64_t instantOf(std::int64_t wall) {
  const auto [smaller, larger] =
      std::minmax({appliedZone.standard, appliedZone.standard + appliedZone.saving});
  return wall - (zoneOffset(wall - larger) == larger ? larger : smaller);
}

}  // namespace

StoreResult applyTimeZone(SettingsStore& store) {
  TimeZoneSettings zone{};
  zone.timezone = kUtcTimeZone;
  const StoreResult result = store.peek(tzoneRecord, &zone);
  appliedZone = localZone(zone);
  return result;
}

std::int64_t cameraTime(SettingsStore& store, std::int64_t systemTime) {
  ClockSettings stored;
  const bool known = store.peek(curtimeRecord, &stored) == StoreResult::kDone;
  return systemTime + (known ? offsetOf(stored) : 0);
}

StoreResult readClock(SettingsStore& store, std::int64_t systemTime, ClockSettings* record) {
  ClockSettings setting;
  StoreResult result = store.peek(curtimeRecord, &setting);
  if (result == StoreResult::kDone) result = applyTimeZone(store);
  if (result != StoreResult::kDone) return result;
  const std::int64_t instant = systemTime + offsetOf(setting);
  const CivilTime local = civilTime(instant + zoneOffset(instant));
  setting.year = local.year;
  setting.month = local.month;
  setting.day = local.day;
  setting.hour = local.hour;
  setting.minute = local.minute;
  setting.second = local.second;
  *record = setting;
  return result;
}

StoreResult setClock(SettingsStore& store, std::int64_t systemTime, const ClockSettings& record) {
  const CivilTime wall{record.year, record.month, record.day, record.hour, record.minute, record.second};
  if (!isCivilTime(wall)) return store.refuse(curtimeRecord, "no such date");
  if (const StoreResult result = applyTimeZone(store); result != StoreResult::kDone) return result;
  const std::int64_t offset = instantOf(secondsOf(wall)) - systemTime;
  // Stores no date and time, because they follow from the offset. Keeps the reserved bytes.
  ClockSettings setting{};
  setting.offset_days = static_cast<std::int32_t>(offset / kDay);
  setting.offset_seconds = static_cast<std::int32_t>(offset % kDay);
  std::copy(std::begin(record.reserved0), std::end(record.reserved0), setting.reserved0);
  setting.reserved1 = record.reserved1;
  return store.write(curtimeRecord, &setting);
}

}  // namespace camera
