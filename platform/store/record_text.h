// The text form of a record's elements, as camera-settings prints and parses it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/store/record.h"

namespace camera {

// A number in decimal, reserved bytes in hexadecimal, a text as it is. In a text, a backslash, a line end and
// other control bytes become \\, \n and \xNN.
std::string formatElement(const Field& field, const void* element);

// Parses a text of that form and stores its value. False, with the element untouched, if the text is
// malformed or its value is outside the field's bounds.
bool parseElement(const Field& field, std::string_view text, void* element);

struct Element {
  const Field* field;
  std::size_t offset;
};

// Finds an element by its name, which for an array is name[index].
std::optional<Element> findElement(const RecordInfo& info, std::string_view name);

}  // namespace camera
