// The checks on texts that every other check is made of. Handlers check with the rows of framework/params.h
// and, for rules of their own, with these; BaseCgilet and CommonAPI offer the same under the names and in the
// shapes that the camera's other programs know.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace camera {

// Characters that a text may be made of, besides extra characters given as a text.
struct CharClass {
  bool letters = false;    // A to Z, a to z
  bool digits = false;     // 0 to 9
  bool hexDigits = false;  // 0 to 9, A to F, a to f
  bool any = false;        // every byte; for rows of framework/params.h
};
inline constexpr CharClass kAlnum{.letters = true, .digits = true};
inline constexpr CharClass kDigits{.digits = true};
inline constexpr CharClass kHexDigits{.hexDigits = true};
inline constexpr CharClass kAnyBytes{.any = true};

// True when every byte is of the class or one of the extra characters; the empty text passes, a NUL never
// does.
bool consistsOf(std::string_view text, CharClass accepted, std::string_view extra = {});

// True for an optional minus sign and decimal digits that yield a value of min to max; value may be null.
bool parseInteger(std::string_view text, int min, int max, int* value);

// The number that the text begins with: an optional minus sign and decimal digits; what follows them is
// dropped. 0 without digits; what does not fit becomes the nearest number that does.
int leadingInteger(std::string_view text);

// The length of the text in bytes when it is min to max and none of them is a NUL, otherwise -1.
int lengthWithin(std::string_view text, int min, int max);

// Position of the text among count words, compared whole and by case; -1 when absent. With variants, a text
// that no word equals matches the word it extends with an underscore ("ov9710_720p" matches "ov9710").
int indexOf(std::string_view text, const char* const words[], int count, bool variants = false);

// Copies the text with its NUL and clears the rest of the buffer. False, and nothing copied, when it does not
// fit.
bool copyText(char* buffer, std::size_t size, std::string_view text);

// Makes a text field hold the text, if it does not already: an equal value leaves what lies behind the NUL.
// False, and nothing changed, when it does not fit.
template <std::size_t N>
bool setText(char (&field)[N], std::string_view text) {
  return text == std::string_view{field, strnlen(field, N)} || copyText(field, N, text);
}

// Appends the pieces between the separator's occurrences, empty ones included; an empty text has none.
// Returns their number, or -1 when the separator is empty.
int split(std::string_view text, std::string_view separator, std::vector<std::string>& pieces);

// True for a day that the Gregorian calendar has, in the years 1 to 9999.
bool isCalendarDate(int year, int month, int day);

// True for four decimal numbers 0 to 255 without leading zeros, joined by dots; address may be null and
// receives the four bytes in network order.
bool parseIpv4(std::string_view text, unsigned char* address = nullptr);

// True for an IPv4 netmask: at least one set bit, and all of them contiguous from the top.
bool isNetmask(std::string_view text);

// Takes the next field of a separated text. cursor moves past the separator, or becomes null after the last
// field. The field is split at its first inner separator into two texts; without an inner separator in it, or
// with an empty one, all goes into the first and the second is empty. second may be null, and what follows
// the inner separator is then dropped. An empty text is one empty field. Returns 0; -1 at the end; -2, with
// nothing moved or written, when a field does not fit its buffer.
int nextField(const char** cursor, const char* separator, const char* inner, char* first,
              std::size_t firstSize, char* second, std::size_t secondSize);

// The parts, one after the other.
std::string joined(std::initializer_list<std::string_view> parts);

// Stores the value; true when the field held another.
template <class Field>
bool setIfDifferent(Field* field, int value) {
  const auto converted = static_cast<Field>(value);
  if (*field == converted) return false;
  *field = converted;
  return true;
}

// The decimal digits of a number, without the allocation that a string would need.
class Decimal {
 public:
  explicit Decimal(std::int64_t number)
      : end_{std::to_chars(digits_, digits_ + sizeof digits_, number).ptr} {}
  std::string_view text() const { return {digits_, static_cast<std::size_t>(end_ - digits_)}; }

 private:
  char digits_[24];
  char* end_;
};

}  // namespace camera
