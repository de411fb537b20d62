// Cutting texts into parts, reading numbers from them and copying them into fields.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace camera {

// Takes the text up to the separator, or all of it, off the rest.
std::string_view takeUntil(char separator, std::string_view* rest);

// True for a text that is one number in that base and nothing else: an optional minus sign and digits. A
// value that does not fit is no number. number is written only on success.
bool readInteger(std::string_view text, int base, std::int64_t* number);

// The same for a number that its type can hold.
template <class Number>
bool readNumber(std::string_view text, Number* number, int base = 10) {
  std::int64_t value = 0;
  if (!readInteger(text, base, &value) || !std::in_range<Number>(value)) return false;
  *number = static_cast<Number>(value);
  return true;
}

// The same for a decimal number of min to max; value may be null.
bool parseInteger(std::string_view text, int min, int max, int* value);

// A byte that a line of text cannot show: below 0x20, or 0x7F.
constexpr bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

// Copies the text with its NUL and clears the rest of the buffer. False, and nothing copied, if it does not
// fit or holds a NUL.
bool copyText(char* buffer, std::size_t size, std::string_view text);

// The text in a field, which is not terminated if it fills the field.
template <std::size_t N>
std::string_view textOf(const char (&field)[N]) {
  return {field, strnlen(field, N)};
}

// Makes a field hold the text. A field that already does keeps the bytes behind the NUL, so that an equal
// value leaves a record equal. False, and nothing changed, if the text does not fit.
template <std::size_t N>
bool setText(char (&field)[N], std::string_view text) {
  return text == textOf(field) || copyText(field, N, text);
}

}  // namespace camera
