// Parser of application/x-www-form-urlencoded texts.
#include "framework/form.h"

#include <utility>

#include "framework/utf8.h"
#include "platform/text.h"

namespace camera {
namespace {

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string decode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '%' && i + 2 < text.size();
    const int high = escaped ? hexValue(text[i + 1]) : -1;
    const int low = escaped ? hexValue(text[i + 2]) : -1;
    if (high >= 0 && low >= 0) {
      decoded += static_cast<char>(high << 4 | low);
      i += 2;
    } else {
      decoded += text[i] == '+' ? ' ' : text[i];
    }
  }
  return decoded;
}

}  // namespace

void parseForm(std::string_view text, Queries& queries, bool keepsBytes) {
  while (!text.empty()) {
    std::string_view value = takeUntil('&', &text);
    if (value.empty()) continue;
    const std::string_view name = takeUntil('=', &value);
    std::string bytes = decode(value);
    if (!keepsBytes) bytes = decodeUtf8(bytes);
    queries.insert_or_assign(decodeUtf8(decode(name)), std::move(bytes));
  }
}

void appendEscaped(char c, std::string* text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  *text += {'%', kHex[byte >> 4], kHex[byte & 15]};
}

}  // namespace camera
