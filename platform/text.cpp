// Cuts texts into parts, reads numbers from them and copies them into fields.
#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace camera {

bool readInteger(std::string_view text, int base, std::int64_t* number) {
  std::int64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc{} || stop != end) return false;
  *number = value;
  return true;
}

bool parseInteger(std::string_view text, int min, int max, int* value) {
  std::int64_t number = 0;
  if (!readInteger(text, 10, &number) || number < min || number > max) return false;
  if (value != nullptr) *value = static_cast<int>(number);
  return true;
}

// Looks at eight bytes at once, since most texts are plain. The last eight may overlap those before.
bool isPlain(std::string_view text) {
  constexpr std::uint64_t kEach = 0x0101010101010101;  // times a byte: that byte eight times
  constexpr std::size_t kStep = sizeof kEach;
  const auto foundAt = [&](std::size_t position) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text.data() + position, kStep);
    return (bytes | (bytes - 0x20 * kEach) | ((bytes ^ 0x7F * kEach) - kEach)) & 0x80 * kEach;
  };
  if (text.size() < kStep)
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
  std::uint64_t found = foundAt(text.size() - kStep);
  for (std::size_t i = 0; i + kStep < text.size(); i += kStep) found |= foundAt(i);
  return found == 0;
}

bool copyText(char* buffer, std::size_t size, std::string_view text) {
  if (text.size() >= size || text.find('\0') != text.npos) return false;
  text.copy(buffer, text.size());
  std::memset(buffer + text.size(), 0, size - text.size());
  return true;
}

std::string joined(std::initializer_list<std::string_view> parts) {
  std::size_t length = 0;
  for (const std::string_view part : parts) length += part.size();
  std::string text;
  text.reserve(length);
  for (const std::string_view part : parts) text += part;
  return text;
}

}  // namespace camera
