// Cuts texts into parts, reads numbers from them and copies them into fields.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace camera {

// Removes the text up to the first separator from rest and returns it, without the separator. Without a
// separator, this is all of rest.
inline std::string_view takeUntil(char separator, std::string_view* rest) {
  const std::string_view whole = *rest;
  const void* found = whole.empty() ? nullptr : std::memchr(whole.data(), separator, whole.size());
  if (found == nullptr) {
    *rest = {};
    return whole;
  }
  const auto length = static_cast<std::size_t>(static_cast<const char*>(found) - whole.data());
  *rest = {whole.data() + length + 1, whole.size() - length - 1};
  return {whole.data(), length};
}

// True if the text is one number in that base and nothing else: an optional minus sign and digits. False also
// if it does not fit into 64 bits. number is written only on success.
bool readInteger(std::string_view text, int base, std::int64_t* number);

// The same; false also if the number does not fit into its type.
template <class Number>
bool readNumber(std::string_view text, Number* number, int base = 10) {
  std::int64_t value = 0;
  if (!readInteger(text, base, &value) || !std::in_range<Number>(value)) return false;
  *number = static_cast<Number>(value);
  return true;
}

// The same for a decimal number from min to max; value may be null.
bool parseInteger(std::string_view text, int min, int max, int* value);

// Joins the parts without a separator.
std::string joined(std::initializer_list<std::string_view> parts);

// True for a control character: a byte below 0x20, or 0x7F.
constexpr bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

// True if all characters are printable ASCII.
bool isPlain(std::string_view text);

// Copies the text and clears the rest of the buffer. False, with nothing changed, if the text does not fit
// with a NUL after it, or holds a NUL.
bool copyText(char* buffer, std::size_t size, std::string_view text);

// The text in a field, up to its NUL or, without one, to the end of the field.
template <std::size_t N>
std::string_view textOf(const char (&field)[N]) {
  return {field, strnlen(field, N)};
}

// Stores the text in a field. A field that already holds it keeps the bytes after its NUL, so that an equal
// value leaves the record equal. False, with nothing changed, if the text does not fit or holds a NUL.
template <std::size_t N>
bool setText(char (&field)[N], std::string_view text) {
  return text == textOf(field) || copyText(field, N, text);
}

}  // namespace camera
