// A record with a field of every kind, in two versions, and the records that go with it in the store's tests.
#pragma once

#include "platform/store/record.h"

namespace camera::test {

struct Sample {
  std::int32_t number;
  std::uint8_t flag;
  std::uint8_t spare[3];
  char text[8];
  char names[2][6];
  std::uint8_t levels[4];  // version 1 ended before them
};

inline constexpr Sample kSampleDefaults{
    .number = -7, .flag = 1, .spare = {}, .text = "abc", .names = {"one", "two"}, .levels = {1, 2, 3, 4}};

inline constexpr Field kSampleFields[] = {
    CAMERA_BOUNDED(Sample, number, -100, 1000),
    CAMERA_BOUNDED(Sample, flag, 0, 1),
    CAMERA_RESERVED(Sample, spare),
    CAMERA_BOUNDED(Sample, text, 1, 7),
    CAMERA_FIELD(Sample, names),
    CAMERA_FIELD(Sample, levels),
};

inline constexpr RecordInfo kSample =
    describe::record("sample", kSampleDefaults, kSampleFields, {.version = 2});
inline constexpr RecordInfo kIndivisible =
    describe::record("whole", kSampleDefaults, kSampleFields, {.version = 2, .indivisible = true});
inline constexpr RecordInfo kDependent =
    describe::record("linked", kSampleDefaults, kSampleFields, {.version = 2, .dependsOn = 1});
inline constexpr const RecordInfo* kSampleRecords[] = {&kSample, &kIndivisible, &kDependent};

}  // namespace camera::test
