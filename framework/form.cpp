// Parser of application/x-www-form-urlencoded texts.
#include "framework/form.h"

#include <algorithm>
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

std::size_t controlSize(std::string_view text, std::size_t at) {
  if (isControl(text[at])) return 1;
  constexpr std::string_view kLineEnds[] = {"\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};
  for (const std::string_view end : kLineEnds) {
    if (text.substr(at, end.size()) == end) return end.size();
  }
  return 0;
}

namespace {

bool holdsControl(std::string_view text) {
  if (isPlain(text)) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (controlSize(text, i) > 0) return true;
  }
  return false;
}

bool holdsEscape(std::string_view text) {
  for (std::size_t i = 0; i + 2 < text.size(); ++i) {
    if (text[i] == '%' && hexValue(text[i + 1]) >= 0 && hexValue(text[i + 2]) >= 0) return true;
  }
  return false;
}

void appendAllEscaped(std::string_view text, std::string* line) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t size = controlSize(text, i);
    const std::size_t end = i + std::max<std::size_t>(size, 1);
    if (size == 0 && text[i] != '%') {
      *line += text[i++];
    } else {
      while (i < end) appendEscaped(text[i++], line);
    }
  }
}

}  // namespace

void appendShown(std::string_view text, std::string* line) {
  if (holdsControl(text)) return appendAllEscaped(text, line);
  *line += text;
}

std::string shownName(std::string_view name) {
  if (!holdsControl(name) && !holdsEscape(name)) return std::string{name};
  std::string shown;
  appendAllEscaped(name, &shown);
  return shown;
}

}  // namespace camera
