// A record with a field of every kind, in two versions, and the records that go with it in the store's tests.
#pragma once

#include "platform/store/record.h"

namespace camera::test {

struct Sample {
  std::int32_t number = -7;
  std::uint8_t flag = 1;
  std::uint8_t reserved[3];
  char text[8] = "abc";
  char names[2][6] = {"one", "two"};
  std::uint8_t levels[4] = {1, 2, 3, 4};  // version 1 ended before them
};

inline constexpr Sample kSampleDefaults{};

}  // namespace camera::test

template <>
struct camera::Description<camera::test::Sample> : Describes<test::Sample, 32> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, number, -100, 1000), CAMERA_FIELD(4, flag, 0, 1), CAMERA_FIELD(5, reserved),
      CAMERA_FIELD(8, text, 1, 7),         CAMERA_FIELD(16, names),     CAMERA_FIELD(28, levels),
  };
  static constexpr Exceptions kExceptions{.version = 2};
};

namespace camera::test {

using SampleDescription = Description<Sample>;
inline constexpr RecordInfo kSample = describe::record<SampleDescription>("sample");
inline constexpr RecordInfo kIndivisible =
    describe::record<SampleDescription>("whole", {.version = 2, .indivisible = true});
inline constexpr RecordInfo kDependent =
    describe::record<SampleDescription>("linked", {.version = 2, .dependsOn = 1});
inline constexpr const RecordInfo* kSampleRecords[] = {&kSample, &kIndivisible, &kDependent};

}  // namespace camera::test
