// Cutting texts into parts and reading numbers from them.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

namespace camera {

// Takes the text up to the separator, or all of it, off the rest.
std::string_view takeUntil(char separator, std::string_view* rest);

// True for a text that is one number in that base and nothing else; number is untouched by any other.
bool readInteger(std::string_view text, int base, std::int64_t* number);

// The same of a number that its type can hold.
template <class Number>
bool readNumber(std::string_view text, Number* number, int base = 10) {
  std::int64_t value = 0;
  if (!readInteger(text, base, &value) || !std::in_range<Number>(value)) return false;
  *number = static_cast<Number>(value);
  return true;
}

}  // namespace camera
