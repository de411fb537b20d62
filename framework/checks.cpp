// Checks on texts, for parameter rows and the rules of endpoints.
#include "framework/checks.h"

#include <algorithm>

namespace camera {
namespace {

// Written out because the <cctype> functions would link the locale.
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
  return std::all_of(text.begin(), text.end(), [&](char c) {
    return (accepted.letters && isLetter(c)) || (accepted.digits && isDecimal(c)) ||
           (accepted.hexDigits && isHex(c)) || (c != '\0' && extra.find(c) != extra.npos);
  });
}

int leadingInteger(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative) text.remove_prefix(1);
  std::int64_t magnitude = 0;
  for (const char c : text) {
    if (!isDecimal(c)) break;
    magnitude = std::min<std::int64_t>(magnitude * 10 + (c - '0'), INT32_MAX);
  }
  return static_cast<int>(isNegative ? -magnitude : magnitude);
}

int indexOf(std::string_view text, Words words) {
  const auto found = std::find(words.begin(), words.end(), text);
  return found == words.end() ? -1 : static_cast<int>(found - words.begin());
}

bool isCalendarDate(int year, int month, int day) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return day <= kDays[month - 1] + (leap && month == 2 ? 1 : 0);
}

bool parseIpv4(std::string_view text, unsigned char* address) {
  if (std::count(text.begin(), text.end(), '.') != 3) return false;
  for (int i = 0; i < 4; ++i) {
    const std::string_view part = takeUntil('.', &text);
    const bool hasLeadingZero = part.size() > 1 && part.front() == '0';  // some programs read it as octal
    int value = 0;
    if (hasLeadingZero || part.size() > 3 || !consistsOf(part, kDigits) ||
        !parseInteger(part, 0, 255, &value))
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

}  // namespace camera
