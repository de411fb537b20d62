// The camera's clock: the time zones, and that it shows what it was set to, in each of them.
#include "platform/clock/clock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "platform/clock/time_zones.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/tzone.h"
#include "platform/store/settings_store.h"
#include "tests/platform/memory_disk.h"

namespace camera::test {
namespace {

constexpr std::int64_t kSystemTime = 1'700'000'000;  // 2023-11-14 22:13:20 UTC
constexpr std::int64_t kHalfYear = 15'778'800;
constexpr int kLondon = 35;
constexpr TimeZoneSettings kLondonByItsRules{kLondon, 1, 1, "", "", ""};

class Clock : public testing::Test {
 protected:
  static StoreResult set(SettingsStore& store, const char* wall) {
    ClockSettings at{};
    EXPECT_EQ(6, std::sscanf(wall, "%d-%d-%d %d:%d:%d", &at.year, &at.month, &at.day, &at.hour, &at.minute,
                             &at.second));
    return setClock(store, kSystemTime, at);
  }

  std::string wall(std::int64_t systemTime) {
    ClockSettings at;
    if (readClock(store_, systemTime, &at) != StoreResult::kDone) return "unreadable";
    char text[80];
    std::snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%02d", at.year, at.month, at.day, at.hour,
                  at.minute, at.second);
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
      const TimeZoneSettings setting{static_cast<std::uint8_t>(number), daylight, 1, "", "", ""};
      ASSERT_EQ(store_.write(tzoneRecord, &setting), StoreResult::kDone);
      const LocalZone local = localZone(setting);
      const auto [standard, saving] =
          std::minmax({offsetAt(local, kSystemTime), offsetAt(local, kSystemTime + kHalfYear)});
      EXPECT_EQ(standard, zone.east * 60);
      EXPECT_EQ(saving - standard, daylight && zone.daylight != nullptr ? zone.saving * 60 : 0);
      for (const char* time : {"2024-02-29 13:05:00", "1969-01-01 00:00:00", "2100-07-01 12:00:00"}) {
        ASSERT_EQ(set(store_, time), StoreResult::kDone);
        EXPECT_EQ(wall(kSystemTime), time);
      }
    }
  }
}

TEST_F(Clock, ReadsInstantsByTheStoredZone) {
  constexpr TimeZoneSettings kPacific{7, 1, 1, "", "", ""};
  constexpr TimeZoneSettings kLordHowe{80, 1, 1, "", "", ""};
  constexpr TimeZoneSettings kKathmandu{66, 1, 0, "1:00", "M3.2.0/02:00", "M11.1.0/02:00"};
  constexpr TimeZoneSettings kBackwards{kLondon, 1, 0, "-0:30", "M3.2.0/02:00:30", "M11.1.0/02:00"};
  const std::tuple<TimeZoneSettings, std::int64_t, const char*> rows[] = {
      {{kUtcTimeZone, 1, 1, "", "", ""}, 4'118'083'200, "2100-07-01 00:00:00"},
      {kPacific, 1'710'064'799, "2024-03-10 01:59:59"},
      {kPacific, 1'710'064'800, "2024-03-10 03:00:00"},
      {kPacific, 1'730'624'400, "2024-11-03 01:00:00"},
      {kLordHowe, 1'712'415'600, "2024-04-07 01:30:00"},
      {kLordHowe, 1'728'142'200, "2024-10-06 02:30:00"},
      {kKathmandu, 1'719'792'000, "2024-07-01 06:45:00"},
      {kBackwards, 1'710'036'030, "2024-03-10 01:30:30"},
      {{kLondon, 1, 0, "2:00", "M1.5.6/23:59:59", "M12.1.0/02:00"}, 1'719'792'000, "2024-07-01 02:00:00"},
      // An offset over two hours or a malformed rule means standard time.
      {{kLondon, 1, 0, "2:01", "M3.2.0/02:00", "M11.1.0/02:00"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {{kLondon, 1, 0, "1:00", "M3.6.0/02:00", "M11.1.0/02:00"}, 1'719'792'000, "2024-07-01 00:00:00"},
      {{kLondon, 1, 0, "1:00", "M3.2.0/02:00", "M11.1.0/2:00,"}, 1'719'792'000, "2024-07-01 00:00:00"}};
  for (const auto& [zone, instant, expected] : rows) {
    ASSERT_EQ(store_.write(tzoneRecord, &zone), StoreResult::kDone);
    EXPECT_EQ(wall(instant), expected) << zone.offset << " from " << zone.starttime;
  }
}

// A time that occurs twice is the first of the two. A skipped one is an hour later on the clock. An
// impossible one is refused.
TEST_F(Clock, TakesAWallTime) {
  ASSERT_EQ(store_.write(tzoneRecord, &kLondonByItsRules), StoreResult::kDone);
  const std::tuple<const char*, const char*, std::int64_t> rows[] = {
      {"2024-10-27 01:30:00", "2024-10-27 01:30:00", 1'729'989'000},
      {"2024-10-27 02:00:00", "2024-10-27 02:00:00", 1'729'994'400},
      {"2024-03-31 01:30:00", "2024-03-31 02:30:00", 1'711'848'600},
      {"1969-12-31 23:59:59", "1969-12-31 23:59:59", -1}};
  for (const auto& [asked, shown, instant] : rows) {
    EXPECT_EQ(set(store_, asked), StoreResult::kDone) << asked;
    EXPECT_EQ(wall(kSystemTime), shown) << asked;
    EXPECT_EQ(cameraTime(store_, kSystemTime), instant) << asked;
  }
  for (const char* none : {"2023-02-29 12:00:00", "2024-01-367 12:00:00", "2024-13-01 12:00:00",
                           "2024-01-01 24:00:00", "2024-01-01 00:00:60", "2024-01-00 00:00:00",
                           "-2147483648-01-01 00:00:00", "2024--2147483648-01 00:00:00"}) {
    EXPECT_EQ(set(store_, none), StoreResult::kRefused) << none;
    EXPECT_EQ(wall(kSystemTime), "1969-12-31 23:59:59") << none;
  }
}

// The offset is stored in two parts. The parts that two clients store must not mix.
TEST_F(Clock, KeepsTheLaterOfTwoSettingsWhole) {
  SettingsStore other(disk_, kRecords);
  ASSERT_EQ(wall(kSystemTime), "2023-11-14 22:13:20");
  ASSERT_EQ(set(other, "2030-01-01 00:00:00"), StoreResult::kDone);
  ASSERT_EQ(set(store_, "2023-11-14 12:00:00"), StoreResult::kDone);  // 0 days, as it last read
  EXPECT_EQ(wall(kSystemTime), "2023-11-14 12:00:00");
}

TEST_F(Clock, KeepsTheBytesThatNobodyUses) {
  ClockSettings written{};
  written.year = 2024;
  written.month = written.day = 1;
  written.reserved0[0] = written.reserved0[19] = written.reserved1 = 7;
  ASSERT_EQ(setClock(store_, kSystemTime, written), StoreResult::kDone);
  ClockSettings read;
  ASSERT_EQ(readClock(store_, kSystemTime, &read), StoreResult::kDone);
  EXPECT_EQ(std::tuple(read.reserved0[0], read.reserved0[19], read.reserved1), std::tuple(7, 7, 7));
}

// Reading the clock must not count as a read of the zone: the next write of the zone would then undo what
// another process changed.
TEST_F(Clock, LeavesTheLastReadOfTheZoneAlone) {
  TimeZoneSettings zone;
  ASSERT_EQ(store_.read(tzoneRecord, &zone), StoreResult::kDone);
  ASSERT_EQ(SettingsStore(disk_, kRecords).write(tzoneRecord, &kLondonByItsRules), StoreResult::kDone);
  EXPECT_EQ(wall(kSystemTime), "2023-11-14 22:13:20");
  zone.dstenable = 1;
  ASSERT_EQ(store_.write(tzoneRecord, &zone), StoreResult::kDone);
  ASSERT_EQ(store_.read(tzoneRecord, &zone), StoreResult::kDone);
  EXPECT_EQ(zone.timezone, kLondon);
}

TEST_F(Clock, FailsWithTheStore) {
  ASSERT_EQ(store_.write(tzoneRecord, &kLondonByItsRules), StoreResult::kDone);
  ASSERT_EQ(set(store_, "2020-01-01 00:00:00"), StoreResult::kDone);
  disk_.content("tzone") = "damaged";
  EXPECT_EQ(wall(kSystemTime), "unreadable");
  EXPECT_EQ(set(store_, "2021-01-01 00:00:00"), StoreResult::kFailed);
  EXPECT_EQ(cameraTime(store_, kSystemTime), 1'577'836'800);
  EXPECT_EQ(applyTimeZone(store_), StoreResult::kFailed);
  disk_.content("curtime") = "damaged";
  EXPECT_EQ(cameraTime(store_, kSystemTime), kSystemTime);
}

}  // namespace
}  // namespace camera::test
