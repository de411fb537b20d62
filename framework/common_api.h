// CommonAPI: checks, comparisons and conversions under the names and in the shapes that the camera's other
// programs know. Handlers check with framework/checks.h, of which these are made, and take from here what
// only stands here: base64, paths and shell quoting. It holds no state.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "framework/checks.h"

// Result conventions. Code: 0 acceptable, anything else not. Index: the position of the match, negative for
// none. Truth: true acceptable. A failed check leaves its outputs alone. Buffers are never written beyond
// their size, which counts the NUL. Parameters without a name are part of the calls' shape and change
// nothing.
class CommonAPI {
 public:
  // Decimal integer of min to max; code. A negative presence (the parameter was not given) is acceptable.
  static int ChkInt(std::string_view text, int min, int max, int* value, const char* errorText, int flag);
  static int ChkInt(std::string_view text, int presence, int min, int max, int* value, const char* errorText,
                    int flag);
  static int ChkInt(std::string_view text, const char* errorText, int min, int max, int* value, int flag);

  // Length of min to max, made of digits (ChkStr: and letters) and the extra characters; copied into out,
  // given becomes the length: 0 when given empty. Code.
  static int ChkIntStr(std::string_view text, int min, int max, char* out, std::size_t size, int* given,
                       std::string_view extra);
  static int ChkStr(std::string_view text, int min, int max, char* out, std::size_t size, int* given,
                    std::string_view extra);

  // Dotted IPv4 address other than the broadcast address (copied into the buffers that are not null, of 16
  // bytes each) or netmask; code.
  static int ChkIp(std::string_view text, char* first = nullptr, char* second = nullptr);
  static int ChkMask(std::string_view text);

  // Position of the text in the list; the last form is the index itself, the others are codes. Only variants
  // lets a reported sensor model match its base model.
  static int CmpStr(std::string_view text, const char* const list[], int count, int* index, bool, bool);
  static int CmpStr(std::string_view text, const char* const list[], int count, char* out, std::size_t size,
                    int* index, bool);
  static int CmpStr(std::string_view text, const char* const list[], int count, bool variants, bool);

  // Merges: a value that was not given (negative) changes nothing; one that differs is stored and sets
  // changed.
  template <std::size_t N>
  static void CmpStr(const char* text, int given, char (&field)[N], bool* changed) {
    if (given >= 0 && replaceText(field, N, text)) *changed = true;
  }
  static void CmpIdx(int index, std::uint8_t* field, bool* changed);
  static void CmpInt(int value, std::int32_t* field, bool* changed);

  // Overwrites a field that differs from the new value and marks the counter; a text that does not fit, or
  // holds a NUL, is no value. The text forms of a number field take a decimal text that the caller has
  // checked.
  static void isParamChanged(int value, std::int32_t* field, unsigned* changes);
  static void isParamChanged(int value, std::uint8_t* field, unsigned* changes);
  static void isParamChanged(std::string_view text, std::int32_t* field, unsigned* changes);
  static void isParamChanged(std::string_view text, std::uint8_t* field, unsigned* changes);
  template <std::size_t N>
  static void isParamChanged(std::string_view text, char (&field)[N], unsigned* changes) {
    if (replaceText(field, N, text)) ++*changes;
  }

  static bool isNum(std::string_view text);  // one or more decimal digits
  // Letters, digits and the one-character texts of the table; code.
  static int isAlnumStr(std::string_view text, const char* const table[], int count);
  static int isValidStr(std::string_view text, const char* const table[], int count);
  static int isValidStr(std::string_view text, const std::string table[], int count);
  static bool checkLength(std::string_view text, int min, int max);
  static bool checkRange(std::string_view text, int min, int max);

  // Writes the text, or the number when the text is null. Returns the length, -1 when it does not fit.
  static int CopyStr(char* out, std::size_t size, int number, const char* text);

  // Builds a path. Afresh: the text replaces the buffer; otherwise the separator and the text are appended. A
  // second text that is not null follows after another separator. Returns the length, -1 (and the buffer as
  // it was) when it does not fit.
  static int AppendStr(char* out, std::size_t size, const char* text, const char* separator,
                       const char* second, int afresh);

  // As camera::nextField: 0, -1 at the end, -2 when a field does not fit.
  static int GetValBySep(const char** cursor, const char* separator, const char* inner, char* first,
                         std::size_t firstSize, char* second, std::size_t secondSize);

  // Base64 with "=" fill, NUL-terminated. Each returns the length of its output, -1 when that does not fit or
  // the text is none that b64_encode writes.
  static int b64_encode(const void* data, std::size_t length, char* out, std::size_t size);
  static int b64_decode(std::string_view text, void* out, std::size_t size);

 private:
  // True when the field differed and now holds the text. One that is too long or holds a NUL changes nothing.
  static bool replaceText(char* field, std::size_t size, std::string_view text);
};

// True when every character is one of the accepted ones or, as the flags say, a letter or a digit.
bool check_accept_str(std::string_view text, std::string_view accepted, bool letters, bool digits);

// The text in a form that can stand between single quotes on a shell command line. It ends at the first NUL,
// which no command line can hold.
std::string strongEncode(std::string_view text);

// Writes prefix, name, number and the further texts one after the other; null texts and the number -1 add
// nothing. 0; -1, and an empty buffer, when the line does not fit.
int StrCat(char* out, std::size_t size, const char* prefix, const char* name, int number, const char* first,
           const char* second, const char* third, const char* fourth);
// Appends the text and the number (-1: none) to what the buffer holds, after the separator unless it holds
// nothing yet. 0; -1, and the buffer as it was, when it does not fit.
int StrCat(char* out, std::size_t size, const char* text, int number, const char* separator);

// Takes the next attribute of a separated text, as camera::nextField does; *cursor is null after the last
// one. 0, or non-zero at the end or when it does not fit.
int GetAttrValBySep(const char** cursor, const char* separator, const char* inner, char* first,
                    std::size_t firstSize, char* second, std::size_t secondSize);
