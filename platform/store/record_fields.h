// The elements of a record: where each lies, how two of them compare, and which values they may hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/store/record.h"

namespace camera {

inline std::size_t elementOffset(const Field& field, unsigned index) {
  return field.offset + std::size_t{field.width} * index;
}

// "name", of an array "name[index]".
std::string elementName(const Field& field, unsigned index);

// The value of a number element.
std::int32_t elementNumber(const Field& field, const void* element);

// Texts are compared up to their NUL.
bool sameElement(const Field& field, const void* left, const void* right);

// The bounds of the field that holds the byte at that offset.
Bounds boundsAt(const RecordInfo& info, std::ptrdiff_t offset);

// Copies an element; of a text, what follows the NUL becomes zero.
void copyElement(const Field& field, void* to, const void* from);

// False for a text without a NUL and for a value outside the bounds.
bool validElement(const Field& field, const void* element);

// Calls visit(field, index, offset) for every element, in the order in which they lie in the record.
template <class Visit>
void forEachElement(const RecordInfo& info, Visit visit) {
  for (const Field& field : info.fields) {
    for (unsigned index = 0; index < field.count; ++index) visit(field, index, elementOffset(field, index));
  }
}

// The name of the first element that is not valid; empty when all are.
std::string firstInvalid(const RecordInfo& info, const void* record);

}  // namespace camera
