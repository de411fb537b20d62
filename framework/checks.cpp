// The checks on texts that every other check is made of.
#include "framework/checks.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace camera {
namespace {

// The <cctype> functions would bring the locale into a program that has none.
constexpr bool isDecimal(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool isHex(char c) {
  return isDecimal(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

}  // namespace

bool consistsOf(std::string_view text, CharClass accepted, std::string_view extra) {
  for (const char c : text) {
    const bool known = (accepted.letters && isLetter(c)) || (accepted.digits && isDecimal(c)) ||
                       (accepted.hexDigits && isHex(c)) || (c != '\0' && extra.find(c) != extra.npos);
    if (!known) return false;
  }
  return true;
}

bool parseInteger(std::string_view text, int min, int max, int* value) {
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  if (text.empty()) return false;
  std::int64_t magnitude = 0;
  for (const char c : text) {
    if (!isDecimal(c)) return false;
    magnitude = magnitude * 10 + (c - '0');
    if (magnitude > std::int64_t{1} << 31) return false;
  }
  const std::int64_t number = negative ? -magnitude : magnitude;
  if (number < min || number > max) return false;
  if (value != nullptr) *value = static_cast<int>(number);
  return true;
}

int leadingInteger(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  std::int64_t magnitude = 0;
  for (const char c : text) {
    if (!isDecimal(c)) break;
    magnitude = std::min<std::int64_t>(magnitude * 10 + (c - '0'), INT32_MAX);
  }
  return static_cast<int>(negative ? -magnitude : magnitude);
}

int lengthWithin(std::string_view text, int min, int max) {
  const auto length = static_cast<std::int64_t>(text.size());
  const bool hasNul = text.find('\0') != text.npos;
  return length >= min && length <= max && !hasNul ? static_cast<int>(length) : -1;
}

int indexOf(std::string_view text, const char* const words[], int count, bool variants) {
  for (int i = 0; i < count; ++i) {
    if (text == words[i]) return i;
  }
  for (int i = 0; variants && i < count; ++i) {
    const std::string_view base = words[i];
    if (!base.empty() && text.starts_with(base) && text.substr(base.size()).starts_with('_')) return i;
  }
  return -1;
}

bool copyText(char* buffer, std::size_t size, std::string_view text) {
  if (text.size() >= size || text.find('\0') != text.npos) return false;
  std::copy(text.begin(), text.end(), buffer);
  std::memset(buffer + text.size(), 0, size - text.size());
  return true;
}

int split(std::string_view text, std::string_view separator, std::vector<std::string>& pieces) {
  pieces.clear();
  if (separator.empty()) return -1;
  if (text.empty()) return 0;
  for (std::size_t end = text.find(separator); end != text.npos; end = text.find(separator)) {
    pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(end + separator.size());
  }
  pieces.emplace_back(text);
  return static_cast<int>(pieces.size());
}

bool isCalendarDate(int year, int month, int day) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return day <= kDays[month - 1] + (leap && month == 2 ? 1 : 0);
}

bool parseIpv4(std::string_view text, unsigned char* address) {
  std::vector<std::string> parts;
  if (split(text, ".", parts) != 4) return false;
  for (std::size_t i = 0; i < 4; ++i) {
    const std::string& part = parts[i];
    const bool leadingZero = part.size() > 1 && part.front() == '0';  // octal to some readers
    int value = 0;
    if (leadingZero || part.size() > 3 || !parseInteger(part, 0, 255, &value) || part.front() == '-')
      return false;
    if (address != nullptr) address[i] = static_cast<unsigned char>(value);
  }
  return true;
}

bool isNetmask(std::string_view text) {
  unsigned char bytes[4] = {};
  if (!parseIpv4(text, bytes)) return false;
  const std::uint32_t mask = std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
                             std::uint32_t{bytes[2]} << 8 | std::uint32_t{bytes[3]};
  const std::uint32_t host = ~mask;
  return mask != 0 && (host & (host + 1)) == 0;
}

int nextField(const char** cursor, const char* separator, const char* inner, char* first,
              std::size_t firstSize, char* second, std::size_t secondSize) {
  if (cursor == nullptr || *cursor == nullptr) return -1;
  const std::string_view rest = *cursor;
  const std::size_t separatorLength = std::strlen(separator);
  const std::size_t end = separatorLength == 0 ? rest.npos : rest.find(separator);
  std::string_view field = rest.substr(0, end);
  std::string_view tail;
  const std::size_t at = inner == nullptr || *inner == '\0' ? field.npos : field.find(inner);
  if (at != field.npos) {
    tail = field.substr(at + std::strlen(inner));
    field = field.substr(0, at);
  }
  if (second != nullptr && tail.size() >= secondSize) return -2;
  if (!copyText(first, firstSize, field)) return -2;
  if (second != nullptr) copyText(second, secondSize, tail);
  *cursor = end == rest.npos ? nullptr : *cursor + end + separatorLength;
  return 0;
}

std::string joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

}  // namespace camera
