// The description of a settings record. The file check, the text form, the validation, the merge and the
// factory defaults follow from it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <type_traits>

#include "platform/store/field.h"
#include "platform/store/record_list.h"

namespace camera {

enum class StoreResult : int {
  kDone = 0,
  kRefused = 1,  // an unterminated text, a value outside its bounds, or a write decided on outdated values
  kFailed = 2,   // an error of the operating system, or a file that is not as the store writes it
};

// One field. Every byte of a record belongs to exactly one.
struct Field {
  const char* name;
  FieldKind kind;
  bool isArray;
  std::uint16_t offset;  // of the first element, in bytes
  std::uint16_t width;   // of one element, in bytes
  std::uint16_t count;   // of elements; 1 unless it is an array
  std::int32_t min;      // the bounds of a number, or of a text's length in bytes
  std::int32_t max;
};

// Everything the store knows about a record.
struct RecordInfo {
  const char* name;
  std::uint16_t version;  // raised when the record grows; an older file gets the new fields from the defaults
  std::uint16_t size;     // in bytes
  std::span<const Field> fields;
  const void* defaults;
  bool indivisible;         // its fields depend on one another: changes of two processes are never merged
  std::uint64_t dependsOn;  // bits of the records on which its values depend
};

// The index of each record, by its short name.
#define CAMERA_RECORD_INDEX(name, type) name,
enum class RecordIndex : std::uint8_t { CAMERA_RECORDS(CAMERA_RECORD_INDEX) count };
#undef CAMERA_RECORD_INDEX
inline constexpr std::size_t kMostRecordBytes = 2000;
inline constexpr std::size_t kRecordCount = static_cast<std::size_t>(RecordIndex::count);
static_assert(kRecordCount <= 64, "Actions holds a bit per record");

constexpr std::uint64_t recordBit(RecordIndex index) {
  return std::uint64_t{1} << static_cast<unsigned>(index);
}

#define CAMERA_DECLARE_DESCRIPTION(name, type) extern const RecordInfo name##Record;
CAMERA_RECORDS(CAMERA_DECLARE_DESCRIPTION)
#undef CAMERA_DECLARE_DESCRIPTION

// All records, by index.
extern const std::array<const RecordInfo*, kRecordCount> kRecords;

// The description of a record, written beside its struct:
//
//   template <>
//   struct Description<HostSettings> : Describes<HostSettings, 132> {
//     static constexpr Field kFields[] = {
//         CAMERA_FIELD(0, name, 1, 36),
//         CAMERA_FIELD(68, location, 0, 60),
//     };
//   };
//
// The size and the offsets are those of the stored record; a struct that has others does not compile. The
// last two arguments of a field are its bounds. Without them it accepts all values of its type. A member
// whose name begins with "reserved" holds bytes that no endpoint uses; where the compiler would add padding,
// declare such a member.
template <class Record>
struct Description;

// The members of RecordInfo that few records set. Such a record declares its own kExceptions.
struct Exceptions {
  std::uint16_t version = 1;
  bool indivisible = false;
  std::uint64_t dependsOn = 0;
};

template <class Struct, std::size_t size>
struct Describes {
  using Record = Struct;
  static constexpr std::size_t kSize = size;
  static constexpr Exceptions kExceptions{};
};

#define CAMERA_FIELD(position, member, ...)                            \
  camera::describe::field<decltype(Record::member)>(#member, position, \
                                                    offsetof(Record, member) __VA_OPT__(, ) __VA_ARGS__)

namespace describe {

// Derives the kind, width and count from a member's type: uint8_t, int32_t, a text, or an array of these.
template <class Member>
constexpr Field field(std::string_view name, std::size_t position, std::size_t offset) {
  using Element = std::remove_all_extents_t<Member>;
  constexpr bool isText = std::is_same_v<Element, char>;
  constexpr bool isByte = std::is_same_v<Element, std::uint8_t>;
  static_assert(isText || isByte || std::is_same_v<Element, std::int32_t>);
  if (position != offset) failToCompile("the struct has another offset than files");
  const bool isReserved = name.starts_with("reserved");
  const bool isArray = !isReserved && std::rank_v<Member> == (isText ? 2 : 1);
  const std::size_t count = isArray ? std::extent_v<Member, 0> : 1;
  const std::size_t width = sizeof(Member) / count;
  const auto limits = [&]() -> Bounds {
    if (isReserved) return {0, 0};
    if (isText) return {0, static_cast<std::int32_t>(width) - 1};
    if (isByte) return {0, std::numeric_limits<std::uint8_t>::max()};
    return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
  }();
  return {.name = name.data(),
          .kind = isReserved ? FieldKind::kReserved
                  : isText   ? FieldKind::kText
                  : isByte   ? FieldKind::kByte
                             : FieldKind::kInteger,
          .isArray = isArray,
          .offset = static_cast<std::uint16_t>(offset),
          .width = static_cast<std::uint16_t>(width),
          .count = static_cast<std::uint16_t>(count),
          .min = limits.min,
          .max = limits.max};
}

template <class Member>
constexpr Field field(std::string_view name, std::size_t position, std::size_t offset, std::int32_t min,
                      std::int32_t max) {
  Field bounded = field<Member>(name, position, offset);
  if (bounded.kind == FieldKind::kReserved || min < bounded.min || max > bounded.max)
    failToCompile("the type does not hold these bounds");
  bounded.min = min;
  bounded.max = max;
  return bounded;
}

// True if the fields, in order, cover the record without a gap or an overlap.
template <std::size_t N>
constexpr bool tiles(const Field (&fields)[N], std::size_t size) {
  std::size_t end = 0;
  for (const Field& field : fields) {
    if (field.offset != end) return false;
    end += std::size_t{field.width} * field.count;
  }
  return end == size;
}

// The factory defaults: the member initializers of the record's struct; 0 or empty without one.
template <class Record>
inline constexpr Record kFactory{};

template <class Description>
consteval RecordInfo record(const char* name, const Exceptions& exceptions = Description::kExceptions) {
  using Record = typename Description::Record;
  static_assert(std::is_trivially_copyable_v<Record> && sizeof(Record) == Description::kSize);
  static_assert(sizeof(Record) <= kMostRecordBytes, "the store reads a file at once");
  static_assert(tiles(Description::kFields, sizeof(Record)),
                "the fields leave a gap or overlap; declare padding as a reserved member");
  return {.name = name,
          .version = exceptions.version,
          .size = sizeof(Record),
          .fields = Description::kFields,
          .defaults = &kFactory<Record>,
          .indivisible = exceptions.indivisible,
          .dependsOn = exceptions.dependsOn};
}

}  // namespace describe
}  // namespace camera
