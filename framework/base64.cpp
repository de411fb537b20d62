// Base64 with "=" padding.
#include "framework/base64.h"

#include <algorithm>
#include <cstdint>

namespace camera {
namespace {

constexpr std::string_view kDigits64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Decodes four characters to 24 bits; fill is the number of "=" at their end. Returns false if another
// character is not a base64 digit, or if a bit that the padding leaves unused is set.
bool decodeGroup(std::string_view group, std::size_t fill, std::uint32_t* bits) {
  *bits = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const std::size_t value = i >= 4 - fill ? 0 : kDigits64.find(group[i]);
    if (value == kDigits64.npos) return false;
    *bits = *bits << 6 | static_cast<std::uint32_t>(value);
  }
  const std::uint32_t unused = fill == 0 ? 0 : fill == 1 ? 0xFF : 0xFFFF;
  return (*bits & unused) == 0;
}

}  // namespace

std::string encodeBase64(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t taken = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t bits = 0;
    for (std::size_t j = 0; j < 3; ++j)
      bits = bits << 8 | (j < taken ? static_cast<unsigned char>(bytes[i + j]) : 0U);
    for (std::size_t j = 0; j < 4; ++j) text += j > taken ? '=' : kDigits64[bits >> (18 - 6 * j) & 63];
  }
  return text;
}

std::optional<std::string> decodeBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t fill = text.ends_with("==") ? 2 : text.ends_with("=") ? 1 : 0;
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); i += 4) {
    std::uint32_t bits = 0;
    if (!decodeGroup(text.substr(i, 4), i + 4 == text.size() ? fill : 0, &bits)) return std::nullopt;
    for (const int shift : {16, 8, 0}) bytes += static_cast<char>(bits >> shift & 0xFF);
  }
  bytes.resize(bytes.size() - fill);
  return bytes;
}

}  // namespace camera
