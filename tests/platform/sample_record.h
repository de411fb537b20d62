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
static_assert(describe::tiles(kSampleFields, sizeof(Sample)));

constexpr RecordInfo sampleInfo(const char* name, bool whole, std::uint64_t linked) {
  return {name, 2, sizeof(Sample), kSampleFields, &kSampleDefaults, whole, linked};
}

inline constexpr RecordInfo kSample = sampleInfo("sample", false, 0);
inline constexpr RecordInfo kWhole = sampleInfo("whole", true, 0);
inline constexpr RecordInfo kLinked = sampleInfo("linked", false, 1);  // with the sample
inline constexpr const RecordInfo* kSampleRecords[] = {&kSample, &kWhole, &kLinked};

}  // namespace camera::test
