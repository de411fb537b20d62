// Checks on texts, for parameter rows and the rules of endpoints.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>

#include "framework/value_tables.h"
#include "platform/text.h"

namespace camera {

// Classes of characters that a text may hold.
struct CharClass {
  bool letters = false;    // A to Z, a to z
  bool digits = false;     // 0 to 9
  bool hexDigits = false;  // 0 to 9, A to F, a to f
  bool any = false;        // every byte, also NUL; only for rows of framework/params.h
};
inline constexpr CharClass kAlnum{.letters = true, .digits = true};
inline constexpr CharClass kDigits{.digits = true};
inline constexpr CharClass kHexDigits{.hexDigits = true};
inline constexpr CharClass kAnyBytes{.any = true};

// True if every byte is of the class or one of the extra characters. The empty text is accepted; a NUL is
// rejected.
bool consistsOf(std::string_view text, CharClass accepted, std::string_view extra = {});

// True if the length in bytes is min to max.
constexpr bool hasLength(std::string_view text, std::int64_t min, std::int64_t max) {
  const auto length = static_cast<std::int64_t>(text.size());
  return length >= min && length <= max;
}

// Returns the number at the start of the text: an optional minus sign and digits. What follows is ignored.
// Returns 0 without digits, and +-2147483647 for a number beyond it.
int leadingInteger(std::string_view text);

// Position of the text among the words, compared whole and by case; -1 if absent.
int indexOf(std::string_view text, Words words);

// True for a day of the Gregorian calendar in the years 1 to 9999.
bool isCalendarDate(int year, int month, int day);

// True for four decimal numbers 0 to 255 without leading zeros, joined by dots. Stores the four bytes in
// network order in address, unless that is null.
bool parseIpv4(std::string_view text, unsigned char* address = nullptr);

// True for an IPv4 netmask: at least one set bit, and all of them contiguous from the top.
bool isNetmask(std::string_view text);

// The decimal digits of a number, without allocating memory.
class Decimal {
 public:
  explicit Decimal(std::int64_t number) {
    auto rest = static_cast<std::uint64_t>(number);
    if (number < 0) rest = 0 - rest;
    do {
      *--start_ = static_cast<char>('0' + rest % 10);
      rest /= 10;
    } while (rest != 0);
    if (number < 0) *--start_ = '-';
  }
  Decimal(const Decimal&) = delete;
  Decimal& operator=(const Decimal&) = delete;
  std::string_view text() const { return {start_, static_cast<std::size_t>(std::end(digits_) - start_)}; }

 private:
  char digits_[20];
  char* start_ = std::end(digits_);
};

}  // namespace camera
