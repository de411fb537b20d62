// The camera's clock: the time zones, and that it shows what it was set to, in each of them.
#include "platform/clock.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ctime>

#include "platform/records/curtime.h"
#include "platform/records/tzone.h"
#include "platform/settings_store.h"
#include "platform/time_zones.h"
#include "tests/platform/memory_disk.h"

namespace camera::test {
namespace {

constexpr std::int64_t kSystemTime = 1'700'000'000;  // 2023-11-14 22:13:20 UTC
constexpr int kLondon = 35;

struct Daylight {
  const char* offset = "";  // empty: the zone's own rules
  const char* start = "M3.2.0/02:00";
  const char* stop = "M11.1.0/02:00";
};

class Clock : public testing::Test {
 protected:
  void setZone(int number, bool daylight, const Daylight& rules = {}) {
    _tzone_setting zone{};
    zone.timezone = static_cast<std::uint8_t>(number);
    zone.dstenable = daylight ? 1 : 0;
    zone.dstauto = *rules.offset == '\0' ? 1 : 0;
    std::strcpy(zone.offset, rules.offset);
    std::strcpy(zone.starttime, rules.start);
    std::strcpy(zone.stoptime, rules.stop);
    ASSERT_EQ(store_.write(tzoneRecord, &zone), StoreResult::kDone);
  }

  static StoreResult set(SettingsStore& store, const char* wall, std::int64_t systemTime = kSystemTime) {
    _curtime_setting record{};
    EXPECT_EQ(std::sscanf(wall, "%d-%d-%d %d:%d:%d", &record.year, &record.month, &record.day, &record.hour,
                          &record.minute, &record.second),
              6);
    return setClock(store, systemTime, record);
  }

  std::string wall(std::int64_t systemTime) {
    _curtime_setting record;
    if (readClock(store_, systemTime, &record) != StoreResult::kDone) return "unreadable";
    char text[80];
    std::snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%02d", record.year, record.month, record.day,
                  record.hour, record.minute, record.second);
    return text;
  }

  MemoryDisk disk_;
  SettingsStore store_{disk_, kRecords};
};

TEST_F(Clock, EveryZoneIsItsDeclaredOffsetAndShowsWhatItWasSetTo) {
  for (int number = 1; number <= kTimeZoneCount; ++number) {
    const TimeZone& zone = kTimeZones[static_cast<std::size_t>(number - 1)];
    for (const bool daylight : {false, true}) {
      SCOPED_TRACE("zone " + std::to_string(number) + (daylight ? " with daylight saving" : ""));
      setZone(number, daylight);
      _tzone_setting setting;
      ASSERT_EQ(store_.peek(tzoneRecord, &setting), StoreResult::kDone);
      int standardMonths = 0;
      int savingMonths = 0;
      for (int month = 0; month < 12; ++month) {
        const std::int32_t offset = offsetAt(localZone(setting), kSystemTime + month * 2'629'800L);
        standardMonths += offset == zone.east * 60 ? 1 : 0;
        savingMonths += offset == (zone.east + zone.saving) * 60 ? 1 : 0;
      }
      EXPECT_EQ(standardMonths + savingMonths, 12);
      EXPECT_EQ(savingMonths > 3, daylight && zone.daylight != nullptr);
      for (const char* time : {"2024-02-29 13:05:00", "2024-07-01 00:00:00", "2037-12-31 23:59:59",
                               "1969-01-01 00:00:00", "2100-07-01 12:00:00"}) {
        ASSERT_EQ(set(store_, time), StoreResult::kDone);
        EXPECT_EQ(wall(kSystemTime), time);
      }
    }
  }
}

TEST_F(Clock, ReadsInstantsByTheStoredZone) {
  constexpr int kPacific = 7;
  constexpr int kKathmandu = 66;
  constexpr int kSydney = 79;
  constexpr int kLordHowe = 80;
  constexpr int kKiritimati = 87;
  const Daylight oneHour{.offset = "1:00"};
  const Daylight backwards{.offset = "-0:30", .start = "M3.2.0/02:00:30"};
  const struct {
    int zone;
    bool daylight;
    Daylight rules;
    std::int64_t instant;
    const char* wall;
  } rows[] = {
      {kUtcTimeZone, true, {}, 4'118'083'200, "2100-07-01 00:00:00"},
      {kKathmandu, false, {}, -1, "1970-01-01 05:44:59"},
      {kLondon, true, {}, -16'070'400, "1969-06-29 01:00:00"},
      {kPacific, true, {}, 1'710'064'799, "2024-03-10 01:59:59"},
      {kPacific, true, {}, 1'710'064'800, "2024-03-10 03:00:00"},
      {kPacific, true, {}, 1'730'624'399, "2024-11-03 01:59:59"},
      {kPacific, true, {}, 1'730'624'400, "2024-11-03 01:00:00"},
      {kPacific, false, {}, 1'710'064'800, "2024-03-10 02:00:00"},
      {kLondon, true, {}, 1'711'846'800, "2024-03-31 02:00:00"},
      {kSydney, true, {}, 1'704'067'200, "2024-01-01 11:00:00"},
      {kSydney, true, {}, 1'719'792'000, "2024-07-01 10:00:00"},
      {kLordHowe, true, {}, 1'704'067'200, "2024-01-01 11:00:00"},
      {kLordHowe, true, {}, 1'719'792'000, "2024-07-01 10:30:00"},
      {kKiritimati, true, {}, 1'719'792'000, "2024-07-01 14:00:00"},
      {kKathmandu, true, oneHour, 1'719'792'000, "2024-07-01 06:45:00"},
      {kLondon, true, oneHour, 1'710'036'000, "2024-03-10 03:00:00"},
      {kLondon, true, backwards, 1'710'036'029, "2024-03-10 02:00:29"},
      {kLondon, true, backwards, 1'710'036'030, "2024-03-10 01:30:30"},
      {kLondon, false, oneHour, 1'719'792'000, "2024-07-01 00:00:00"},
      // What is no rule leaves standard time.
      {kLondon, true, {.offset = "2:01"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {kLondon, true, {.offset = "1:60"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {kLondon, true, {.offset = "1:00", .start = "M3.6.0/02:00"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {kLondon, true, {.offset = "1:00", .start = "M0.1.0/02:00"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {kLondon, true, {.offset = "1:00", .start = "3.2.0/02:00"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {kLondon, true, {.offset = "1:00", .stop = "M11.1.0"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {kLondon, true, {.offset = "1:00", .stop = "M11.1.0/2:00,"}, 1'719'792'000, "2024-07-01 00:00:00"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string{row.wall} + " in zone " + std::to_string(row.zone) + " by " + row.rules.offset +
                 " from " + row.rules.start + " to " + row.rules.stop);
    setZone(row.zone, row.daylight, row.rules);
    EXPECT_EQ(wall(row.instant), row.wall);
  }
}

// The hour that comes twice is the first, and one that is skipped counts on; what no clock shows is refused.
TEST_F(Clock, TakesAWallTime) {
  setZone(kLondon, true);
  const struct {
    const char* asked;
    const char* shown;  // null: refused
    std::int64_t instant;
  } rows[] = {
      {"2024-10-27 01:30:00", "2024-10-27 01:30:00", 1'729'989'000},
      {"2024-10-27 02:00:00", "2024-10-27 02:00:00", 1'729'994'400},
      {"2024-03-31 00:59:59", "2024-03-31 00:59:59", 1'711'846'799},
      {"2024-03-31 01:30:00", "2024-03-31 02:30:00", 1'711'848'600},
      {"1969-12-31 23:59:59", "1969-12-31 23:59:59", -1},
      {"2023-02-29 12:00:00", nullptr, 0},
      {"2024-01-367 12:00:00", nullptr, 0},
      {"2024-13-01 12:00:00", nullptr, 0},
      {"2024-01-01 24:00:00", nullptr, 0},
      {"2024-01-01 00:00:60", nullptr, 0},
      {"2024-01-00 00:00:00", nullptr, 0},
      {"-2147483648-01-01 00:00:00", nullptr, 0},
      {"2024--2147483648-01 00:00:00", nullptr, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.asked);
    ASSERT_EQ(set(store_, "2020-01-01 00:00:00"), StoreResult::kDone);
    const bool taken = row.shown != nullptr;
    EXPECT_EQ(set(store_, row.asked), taken ? StoreResult::kDone : StoreResult::kRefused);
    EXPECT_EQ(wall(kSystemTime), taken ? row.shown : "2020-01-01 00:00:00");
    if (taken) {
      EXPECT_EQ(cameraTime(store_, kSystemTime), row.instant);
    }
  }
}

// The offset is stored in two parts; of two clients that set the clock none leaves one of its own.
TEST_F(Clock, KeepsTheLaterOfTwoSettingsWhole) {
  SettingsStore other(disk_, kRecords);
  _curtime_setting seen;
  ASSERT_EQ(readClock(store_, kSystemTime, &seen), StoreResult::kDone);
  ASSERT_EQ(set(other, "2030-01-01 00:00:00"), StoreResult::kDone);
  ASSERT_EQ(set(store_, "2023-11-14 12:00:00"), StoreResult::kDone);  // by 0 days, as it was before
  EXPECT_EQ(wall(kSystemTime), "2023-11-14 12:00:00");
}

// A change of the zone that another process made must not look like one of this process.
TEST_F(Clock, LeavesTheLastReadOfTheZoneAlone) {
  SettingsStore other(disk_, kRecords);
  _tzone_setting zone;
  ASSERT_EQ(store_.read(tzoneRecord, &zone), StoreResult::kDone);
  _tzone_setting others = zone;
  others.timezone = kLondon;
  ASSERT_EQ(other.write(tzoneRecord, &others), StoreResult::kDone);
  EXPECT_EQ(wall(kSystemTime), "2023-11-14 22:13:20");
  zone.dstenable = 1;
  ASSERT_EQ(store_.write(tzoneRecord, &zone), StoreResult::kDone);
  ASSERT_EQ(store_.read(tzoneRecord, &zone), StoreResult::kDone);
  EXPECT_EQ(zone.timezone, kLondon);
}

TEST_F(Clock, FailsWithTheStore) {
  setZone(7, true);
  ASSERT_EQ(set(store_, "2020-01-01 00:00:00"), StoreResult::kDone);
  disk_.content("tzone") = "damaged";
  EXPECT_EQ(wall(kSystemTime), "unreadable");
  EXPECT_EQ(set(store_, "2021-01-01 00:00:00"), StoreResult::kFailed);
  EXPECT_EQ(cameraTime(store_, kSystemTime), 1'577'865'600);
  EXPECT_EQ(applyTimeZone(store_), StoreResult::kFailed);
  disk_.content("curtime") = "damaged";
  EXPECT_EQ(cameraTime(store_, kSystemTime), kSystemTime);
}

}  // namespace
}  // namespace camera::test
