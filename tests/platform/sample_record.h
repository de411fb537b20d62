// A record with a field of every kind, in two versions, and the records that go with it in the store's tests.
#pragma once

#include "platform/store/record.h"

namespace camera::test {

struct Sample {
  std::int32_t number = -7;
  std::uint8_t flag = 1;
  std::uint8_t spare[3];
  char text[8] = "abc";
  char names[2][6] = {"one", "two"};
  std::uint8_t levels[4] = {1, 2, 3, 4};  // version 1 ended before them
};

inline constexpr Sample kSampleDefaults{};

inline constexpr Field kSampleFields[] = {
    CAMERA_BOUNDED(Sample, number, -100, 1000),
    CAMERA_BOUNDED(Sample, flag, 0, 1),
    CAMERA_RESERVED(Sample, spare),
    CAMERA_BOUNDED(Sample, text, 1, 7),
    CAMERA_FIELD(Sample, names),
    CAMERA_FIELD(Sample, levels),
};

inline constexpr RecordInfo kSample = describe::record<Sample>("sample", kSampleFields, {.version = 2});
inline constexpr RecordInfo kIndivisible =
    describe::record<Sample>("whole", kSampleFields, {.version = 2, .indivisible = true});
inline constexpr RecordInfo kDependent =
    describe::record<Sample>("linked", kSampleFields, {.version = 2, .dependsOn = 1});
inline constexpr const RecordInfo* kSampleRecords[] = {&kSample, &kIndivisible, &kDependent};

}  // namespace camera::test
