// The description of a settings record: one table from which follow the file check, the text form, the
// validation, the merge and the factory default.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <type_traits>

#include "platform/store/field.h"
#include "platform/store/record_list.h"

namespace camera {

enum class StoreResult : int {
  kDone = 0,
  kRefused = 1,  // a text without an end, a value outside its bounds, or a decision on stale values
  kFailed = 2,   // refused by the operating system, or the stored file is not what the store wrote
};

// One field. Every byte of a record belongs to exactly one.
struct Field {
  const char* name;
  FieldKind kind;
  bool isArray;
  std::uint16_t offset;  // of the first element, in bytes
  std::uint16_t width;   // of one element, in bytes
  std::uint16_t count;   // elements; 1 and not an array: a plain field
  std::int32_t min;      // of a number its value, of a text its length in bytes
  std::int32_t max;
};

// Everything the store knows about a record.
struct RecordInfo {
  const char* name;
  std::uint16_t version;  // raised when the record grows: an older file gets its tail from the defaults
  std::uint16_t size;     // in bytes
  std::span<const Field> fields;
  const void* defaults;
  bool indivisible;         // its fields depend on one another: two processes' changes are never merged
  std::uint64_t dependsOn;  // the indexes, as bits, of other records that its values have to go together with
};

// The index of each record, by its short name.
#define CAMERA_RECORD_INDEX(name, type) name,
enum class RecordIndex : std::uint8_t { CAMERA_RECORDS(CAMERA_RECORD_INDEX) count };
#undef CAMERA_RECORD_INDEX
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

namespace describe {

// The kind, width and count that a member's type stands for: uint8_t, int32_t, a text, or an array of these.
template <class Member>
constexpr Field ofType(const char* name, std::size_t offset) {
  using Element = std::remove_all_extents_t<Member>;
  constexpr bool isText = std::is_same_v<Element, char>;
  constexpr bool isByte = std::is_same_v<Element, std::uint8_t>;
  static_assert(isText || isByte || std::is_same_v<Element, std::int32_t>);
  constexpr bool isArray = std::rank_v<Member> == (isText ? 2 : 1);
  constexpr std::size_t count = isArray ? std::extent_v<Member, 0> : 1;
  constexpr std::size_t width = sizeof(Member) / count;
  return {.name = name,
          .kind = isText   ? FieldKind::kText
                  : isByte ? FieldKind::kByte
                           : FieldKind::kInteger,
          .isArray = isArray,
          .offset = static_cast<std::uint16_t>(offset),
          .width = static_cast<std::uint16_t>(width),
          .count = static_cast<std::uint16_t>(count),
          .min = isText || isByte ? 0 : std::numeric_limits<std::int32_t>::min(),
          .max = isText   ? static_cast<std::int32_t>(width) - 1
                 : isByte ? std::numeric_limits<std::uint8_t>::max()
                          : std::numeric_limits<std::int32_t>::max()};
}

constexpr Field bounded(Field field, std::int32_t min, std::int32_t max) {
  field.min = min;
  field.max = max;
  return field;
}

constexpr Field reserved(const char* name, std::size_t offset, std::size_t size) {
  return {.name = name,
          .kind = FieldKind::kReserved,
          .isArray = false,
          .offset = static_cast<std::uint16_t>(offset),
          .width = static_cast<std::uint16_t>(size),
          .count = 1,
          .min = 0,
          .max = 0};
}

// True when the fields, in order, cover the record without a gap or an overlap, and every text has room for
// its NUL.
template <std::size_t N>
constexpr bool tiles(const Field (&fields)[N], std::size_t size) {
  std::size_t end = 0;
  for (const Field& field : fields) {
    if (field.offset != end || (field.kind == FieldKind::kText && field.max >= field.width)) return false;
    end += std::size_t{field.width} * field.count;
  }
  return end == size;
}

// What most records are not.
struct Exceptions {
  std::uint16_t version = 1;
  bool indivisible = false;
  std::uint64_t dependsOn = 0;
};

// What the member initializers of the record's struct say, and 0 or empty elsewhere.
template <class Record>
inline constexpr Record kFactory{};

// A whole description; where the fields do not tile the record, it does not compile.
template <class Record, std::size_t N>
consteval RecordInfo record(const char* name, const Field (&fields)[N], Exceptions exceptions = {}) {
  static_assert(std::is_trivially_copyable_v<Record> && sizeof(Record) <= 2000,
                "the store reads a file at once");
  if (!tiles(fields, sizeof(Record)))
    throw "the fields leave a gap or overlap, or a text has no room for its NUL";
  return {.name = name,
          .version = exceptions.version,
          .size = sizeof(Record),
          .fields = fields,
          .defaults = &kFactory<Record>,
          .indivisible = exceptions.indivisible,
          .dependsOn = exceptions.dependsOn};
}

}  // namespace describe
}  // namespace camera

// Lines of a description. FIELD: any value of its type; BOUNDED: values (of a text: lengths) min to max.
#define CAMERA_FIELD(type, member) \
  camera::describe::ofType<decltype(type::member)>(#member, offsetof(type, member))
#define CAMERA_BOUNDED(type, member, min, max) camera::describe::bounded(CAMERA_FIELD(type, member), min, max)
#define CAMERA_RESERVED(type, member) \
  camera::describe::reserved(#member, offsetof(type, member), sizeof(type::member))
