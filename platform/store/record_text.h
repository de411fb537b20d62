// The text form of a record's elements, for every command that prints or reads one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/store/record.h"

namespace camera {

// A number in decimal, reserved bytes in hexadecimal, a text as it is. In a text, a backslash, a line end and
// other control bytes become \\, \n and \xNN.
std::string formatElement(const Field& field, const void* element);

// Stores the value of a text in that form. False, with the element untouched, if the text is malformed or the
// value outside the field's bounds.
bool parseElement(const Field& field, std::string_view text, void* element);

struct Element {
  const Field* field;
  std::size_t offset;
};

// The element of that name: a plain field's name, or of an array name[index].
std::optional<Element> findElement(const RecordInfo& info, std::string_view name);

}  // namespace camera
