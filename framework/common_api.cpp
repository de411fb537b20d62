// CommonAPI: the checks, comparisons and conversions that handlers share.
#include "framework/common_api.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <limits>

namespace {

constexpr int accepted(bool acceptable) {
  return acceptable ? 0 : -1;
}

int checkText(std::string_view text, int min, int max, char* out, std::size_t size, int* given,
              camera::CharClass characters, std::string_view extra) {
  if (camera::lengthWithin(text, min, max) < 0 || !camera::consistsOf(text, characters, extra)) return -1;
  if (!camera::copyText(out, size, text)) return -1;
  *given = static_cast<int>(text.size());
  return 0;
}

std::string_view orEmpty(const char* text) {
  return text == nullptr ? std::string_view{} : std::string_view{text};
}

// Writes all parts after the first kept characters of the buffer, or changes nothing. Returns the new length
// or -1.
int appendAll(char* out, std::size_t size, std::size_t kept, std::initializer_list<std::string_view> parts) {
  std::size_t end = kept;
  for (const std::string_view part : parts) end += part.size();
  if (end >= size) return -1;
  char* at = out + kept;
  for (const std::string_view part : parts) at = std::copy(part.begin(), part.end(), at);
  *at = '\0';
  return static_cast<int>(end);
}

constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The 24 bits of four base64 characters of which the last fill ones may be "="; false for any other text.
bool decodeGroup(std::string_view group, std::size_t fill, std::uint32_t* bits) {
  *bits = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const std::size_t value = i >= 4 - fill ? 0 : kBase64.find(group[i]);
    if (value == kBase64.npos) return false;
    *bits = *bits << 6 | static_cast<std::uint32_t>(value);
  }
  const std::uint32_t unused = fill == 0 ? 0 : fill == 1 ? 0xFF : 0xFFFF;
  return (*bits & unused) == 0;
}

}  // namespace

int CommonAPI::ChkInt(std::string_view text, int min, int max, int* value, const char* /*errorText*/,
                      int /*flag*/) {
  return accepted(camera::parseInteger(text, min, max, value));
}

int CommonAPI::ChkInt(std::string_view text, int presence, int min, int max, int* value,
                      const char* errorText, int flag) {
  return presence < 0 ? 0 : ChkInt(text, min, max, value, errorText, flag);
}

int CommonAPI::ChkInt(std::string_view text, const char* errorText, int min, int max, int* value, int flag) {
  return ChkInt(text, min, max, value, errorText, flag);
}

int CommonAPI::ChkIntStr(std::string_view text, int min, int max, char* out, std::size_t size, int* given,
                         std::string_view extra) {
  return checkText(text, min, max, out, size, given, camera::kDigits, extra);
}

int CommonAPI::ChkStr(std::string_view text, int min, int max, char* out, std::size_t size, int* given,
                      std::string_view extra) {
  return checkText(text, min, max, out, size, given, camera::kAlnum, extra);
}

int CommonAPI::ChkIp(std::string_view text, char* first, char* second) {
  static constexpr std::size_t kDottedSize = 16;
  if (!camera::parseIpv4(text) || text == "255.255.255.255") return -1;
  if (first != nullptr) camera::copyText(first, kDottedSize, text);
  if (second != nullptr) camera::copyText(second, kDottedSize, text);
  return 0;
}

int CommonAPI::ChkMask(std::string_view text) {
  return accepted(camera::isNetmask(text));
}

int CommonAPI::CmpStr(std::string_view text, const char* const list[], int count, int* index, bool /*flag*/,
                      bool /*flag*/) {
  const int found = camera::indexOf(text, list, count);
  if (found < 0) return -1;
  *index = found;
  return 0;
}

int CommonAPI::CmpStr(std::string_view text, const char* const list[], int count, char* out, std::size_t size,
                      int* index, bool /*flag*/) {
  const int found = camera::indexOf(text, list, count);
  if (found < 0 || !camera::copyText(out, size, text)) return -1;
  *index = found;
  return 0;
}

int CommonAPI::CmpStr(std::string_view text, const char* const list[], int count, bool variants,
                      bool /*flag*/) {
  return camera::indexOf(text, list, count, variants);
}

void CommonAPI::CmpIdx(int index, std::uint8_t* field, bool* changed) {
  if (index >= 0 && camera::setIfDifferent(field, index)) *changed = true;
}

void CommonAPI::CmpInt(int value, std::int32_t* field, bool* changed) {
  if (value >= 0 && camera::setIfDifferent(field, value)) *changed = true;
}

void CommonAPI::isParamChanged(int value, std::int32_t* field, unsigned* changes) {
  if (camera::setIfDifferent(field, value)) ++*changes;
}

void CommonAPI::isParamChanged(int value, std::uint8_t* field, unsigned* changes) {
  if (camera::setIfDifferent(field, value)) ++*changes;
}

void CommonAPI::isParamChanged(std::string_view text, std::int32_t* field, unsigned* changes) {
  int value = 0;
  constexpr auto kLimits = std::numeric_limits<std::int32_t>();
  if (camera::parseInteger(text, kLimits.min(), kLimits.max(), &value)) isParamChanged(value, field, changes);
}

void CommonAPI::isParamChanged(std::string_view text, std::uint8_t* field, unsigned* changes) {
  int value = 0;
  if (camera::parseInteger(text, 0, 255, &value)) isParamChanged(value, field, changes);
}

bool CommonAPI::replaceText(char* field, std::size_t size, std::string_view text) {
  if (std::string_view{field, strnlen(field, size)} == text) return false;
  return camera::copyText(field, size, text);
}

bool CommonAPI::isNum(std::string_view text) {
  return !text.empty() && camera::consistsOf(text, camera::kDigits);
}

int CommonAPI::isAlnumStr(std::string_view text, const char* const table[], int count) {
  for (const char& c : text) {
    const std::string_view one{&c, 1};
    if (!camera::consistsOf(one, camera::kAlnum) && camera::indexOf(one, table, count) < 0) return -1;
  }
  return 0;
}

int CommonAPI::isValidStr(std::string_view text, const char* const table[], int count) {
  return camera::indexOf(text, table, count);
}

int CommonAPI::isValidStr(std::string_view text, const std::string table[], int count) {
  const std::string* end = table + count;
  const std::string* found = std::find(table, end, text);
  return found == end ? -1 : static_cast<int>(found - table);
}

bool CommonAPI::checkLength(std::string_view text, int min, int max) {
  return camera::lengthWithin(text, min, max) >= 0;
}

bool CommonAPI::checkRange(std::string_view text, int min, int max) {
  return camera::parseInteger(text, min, max, nullptr);
}

int CommonAPI::CopyStr(char* out, std::size_t size, int number, const char* text) {
  const camera::Decimal decimal(number);
  const std::string_view value = text != nullptr ? std::string_view{text} : decimal.text();
  return camera::copyText(out, size, value) ? static_cast<int>(value.size()) : -1;
}

int CommonAPI::AppendStr(char* out, std::size_t size, const char* text, const char* separator,
                         const char* second, int afresh) {
  const std::string_view joiner = orEmpty(separator);
  const std::string_view before = afresh != 0 ? std::string_view{} : joiner;
  const std::string_view between = second != nullptr ? joiner : std::string_view{};
  return appendAll(out, size, afresh != 0 ? 0 : strnlen(out, size),
                   {before, orEmpty(text), between, orEmpty(second)});
}

int CommonAPI::GetValBySep(const char** cursor, const char* separator, const char* inner, char* first,
                           std::size_t firstSize, char* second, std::size_t secondSize) {
  return camera::nextField(cursor, separator, inner, first, firstSize, second, secondSize);
}

int CommonAPI::b64_encode(const void* data, std::size_t length, char* out, std::size_t size) {
  const std::size_t encoded = (length + 2) / 3 * 4;
  if (encoded >= size) return -1;
  const auto* bytes = static_cast<const unsigned char*>(data);
  for (std::size_t i = 0; i < length; i += 3) {
    const std::size_t taken = std::min<std::size_t>(3, length - i);
    std::uint32_t bits = 0;
    for (std::size_t j = 0; j < 3; ++j) bits = bits << 8 | (j < taken ? bytes[i + j] : 0U);
    for (std::size_t j = 0; j < 4; ++j) *out++ = j > taken ? '=' : kBase64[bits >> (18 - 6 * j) & 63];
  }
  *out = '\0';
  return static_cast<int>(encoded);
}

int CommonAPI::b64_decode(std::string_view text, void* out, std::size_t size) {
  if (text.size() % 4 != 0) return -1;
  const std::size_t fill = text.ends_with("==") ? 2 : text.ends_with("=") ? 1 : 0;
  const std::size_t decoded = text.size() / 4 * 3 - fill;
  if (decoded >= size) return -1;
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); i += 4) {
    std::uint32_t bits = 0;
    if (!decodeGroup(text.substr(i, 4), i + 4 == text.size() ? fill : 0, &bits)) return -1;
    for (const int shift : {16, 8, 0}) bytes += static_cast<char>(bits >> shift & 0xFF);
  }
  std::memcpy(out, bytes.data(), decoded);
  static_cast<char*>(out)[decoded] = '\0';
  return static_cast<int>(decoded);
}

bool check_accept_str(std::string_view text, std::string_view accepted, bool letters, bool digits) {
  return camera::consistsOf(text, {.letters = letters, .digits = digits}, accepted);
}

std::string strongEncode(std::string_view text) {
  std::string encoded;
  for (const char c : text.substr(0, text.find('\0'))) {
    if (c == '\'') {
      encoded += "'\\''";  // end the quotes, an escaped quote, open them again
    } else {
      encoded += c;
    }
  }
  return encoded;
}

int StrCat(char* out, std::size_t size, const char* prefix, const char* name, int number, const char* first,
           const char* second, const char* third, const char* fourth) {
  if (size == 0) return -1;
  const camera::Decimal decimal(number);
  out[0] = '\0';
  return accepted(
      appendAll(out, size, 0,
                {orEmpty(prefix), orEmpty(name), number == -1 ? std::string_view{} : decimal.text(),
                 orEmpty(first), orEmpty(second), orEmpty(third), orEmpty(fourth)}) >= 0);
}

int StrCat(char* out, std::size_t size, const char* text, int number, const char* separator) {
  const camera::Decimal decimal(number);
  const std::size_t kept = strnlen(out, size);
  const std::string_view joiner = kept == 0 ? std::string_view{} : orEmpty(separator);
  return accepted(appendAll(out, size, kept,
                            {joiner, orEmpty(text), number == -1 ? std::string_view{} : decimal.text()}) >=
                  0);
}

int GetAttrValBySep(const char** cursor, const char* separator, const char* inner, char* first,
                    std::size_t firstSize, char* second, std::size_t secondSize) {
  return camera::nextField(cursor, separator, inner, first, firstSize, second, secondSize);
}
