// Parser of application/x-www-form-urlencoded texts.
#include "framework/form.h"

#include <utility>

#include "platform/text.h"

namespace camera {
namespace {

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// A range of lead bytes of UTF-8: how many bytes follow, and the bounds of the first byte that follows.
struct Sequence {
  unsigned char firstLead, lastLead;
  unsigned char following;
  unsigned char low, high;
};
constexpr Sequence kSequences[] = {
    {0xC2, 0xDF, 1, 0x80, 0xBF}, {0xE0, 0xE0, 2, 0xA0, 0xBF}, {0xE1, 0xEC, 2, 0x80, 0xBF},
    {0xED, 0xED, 2, 0x80, 0x9F}, {0xEE, 0xEF, 2, 0x80, 0xBF}, {0xF0, 0xF0, 3, 0x90, 0xBF},
    {0xF1, 0xF3, 3, 0x80, 0xBF}, {0xF4, 0xF4, 3, 0x80, 0x8F},
};

// Returns the length of the UTF-8 sequence at the start of the text. If the sequence is broken, returns minus
// the number of bytes that one U+FFFD replaces.
int sequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return 1;
  for (const Sequence& sequence : kSequences) {
    if (lead < sequence.firstLead || lead > sequence.lastLead) continue;
    int length = 1;
    for (; length <= sequence.following; ++length) {
      const auto at = static_cast<std::size_t>(length);
      const auto next = at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
      const bool first = length == 1;
      if (next < (first ? sequence.low : 0x80U) || next > (first ? sequence.high : 0xBFU)) return -length;
    }
    return length;
  }
  return -1;
}

// Replaces broken UTF-8 by U+FFFD, so that every stored text can be shown.
std::string decodeUtf8(std::string_view text) {
  std::string decoded;
  for (std::string_view rest = text; !rest.empty();) {
    const int length = sequenceLength(rest);
    const auto taken = static_cast<std::size_t>(length < 0 ? -length : length);
    decoded += length < 0 ? std::string_view{"\xEF\xBF\xBD"} : rest.substr(0, taken);
    rest.remove_prefix(taken);
  }
  return decoded;
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
