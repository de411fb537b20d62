// Checks, repairs and writes UTF-8.
#include "framework/utf8.h"

namespace camera {
namespace {

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

}  // namespace

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

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const int length = sequenceLength(text);
    if (length < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(length));
  }
  return true;
}

void appendUtf8(char32_t code, std::string* text) {
  if (code < 0x80) {
    *text += static_cast<char>(code);
    return;
  }
  const int following = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
  static constexpr unsigned char kLeads[] = {0xC0, 0xE0, 0xF0};
  *text += static_cast<char>(kLeads[following - 1] | code >> 6 * following);
  for (int i = following - 1; i >= 0; --i) *text += static_cast<char>(0x80 | (code >> 6 * i & 0x3F));
}

}  // namespace camera
