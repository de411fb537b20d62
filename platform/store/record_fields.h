// The elements of a record: their names, places and values. A plain field has one element, an array several.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/store/record.h"

namespace camera {

inline std::size_t elementOffset(const Field& field, unsigned index) {
  return field.offset + std::size_t{field.width} * index;
}

// "name"; for an element of an array "name[index]".
std::string elementName(const Field& field, unsigned index);

// The value of an element that is a number.
std::int32_t elementNumber(const Field& field, const void* element);

// Texts are compared up to their NUL.
bool sameElement(const Field& field, const void* left, const void* right);

// The bounds of the field that holds the byte at that offset.
Bounds boundsAt(const RecordInfo& info, std::ptrdiff_t offset);

// Copies an element. The bytes after a text become zero.
void copyElement(const Field& field, void* to, const void* from);

// False for a text without a NUL and for a value outside the bounds.
bool validElement(const Field& field, const void* element);

// Converts the elements that lie within the bytes between this machine's byte order and that of files,
// which is little-endian.
void convertByteOrder(const RecordInfo& info, std::span<std::uint8_t> record);

// Calls visit(field, index, offset) for every element, in the order of their offsets.
template <class Visit>
void forEachElement(const RecordInfo& info, Visit visit) {
  for (const Field& field : info.fields) {
    for (unsigned index = 0; index < field.count; ++index) visit(field, index, elementOffset(field, index));
  }
}

// The name of the first invalid element; empty if all are valid.
std::string firstInvalid(const RecordInfo& info, const void* record);

}  // namespace camera
