// Checks on texts, on both sides of their limits.
#include "framework/checks.h"

#include <gtest/gtest.h>

#include <climits>
#include <tuple>

#include "framework/base64.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

// Each row has a check, texts that it accepts and texts that it rejects, separated by bars.
TEST(Checks, AcceptOnly) {
  using Text = std::string_view;
  const std::tuple<bool (*)(Text), std::string, std::string> rows[] = {
      {[](Text text) { return parseInteger(text, 1, 12, nullptr); }, "1|12", "0|13"},
      {[](Text text) { return parseInteger(text, INT_MIN, INT_MAX, nullptr); },
       "-0|-2147483648|2147483647|007",
       "|1a| 1|1 |+1|-|--1|1\0|2147483648|-2147483649|18446744073709551617"s},
      {[](Text text) { return consistsOf(text, kAlnum, "_-."); }, "|a_b-c.d|azAZ09", "a b|[|@|`|{|/|:|a\0b"s},
      {[](Text text) { return consistsOf(text, kHexDigits); }, "09af|19AF", "000g|000G|/|:"},
      {[](Text text) { return hasLength(text, 2, 4); }, "12|1234", "1|12345"},
      {[](Text text) { return parseIpv4(text); }, "192.168.1.10|0.0.0.0|255.255.255.255",
       "256.1.1.1|1.2.3|1.2.3.4.5|1.2.3.4.|1..3.4|01.2.3.4|1.2.3.4 ||1.2.3.4\0|1.2.3.-0"s},
      {[](Text text) { return isNetmask(text); }, "255.255.255.255|128.0.0.0",
       "0.0.0.0|255.0.255.0|0.255.255.255|255.255.255"}};
  for (const auto& [accepts, good, bad] : rows) {
    for (const auto& [texts, expected] : {std::pair{good, true}, std::pair{bad, false}}) {
      const std::string_view all = texts;
      for (std::size_t start = 0; start <= all.size();) {
        const std::size_t end = std::min(all.find('|', start), all.size());
        const std::string_view text = all.substr(start, end - start);
        EXPECT_EQ(accepts(text), expected) << testing::PrintToString(text);
        start = end + 1;
      }
    }
  }
}

TEST(Checks, KnowTheCalendar) {
  const std::tuple<int, int, int, bool> rows[] = {
      {2024, 2, 29, true},  {2023, 2, 29, false}, {1900, 2, 29, false}, {2400, 2, 29, true},
      {9999, 12, 31, true}, {1, 4, 30, true},     {10000, 1, 1, false}, {0, 1, 1, false},
      {2023, 4, 31, false}, {2023, 13, 1, false}, {2023, 0, 1, false},  {2023, 1, 0, false}};
  for (const auto& [year, month, day, expected] : rows)
    EXPECT_EQ(isCalendarDate(year, month, day), expected) << year << "-" << month << "-" << day;
}

TEST(Base64, DecodesWhatItEncodesAndNothingElse) {
  const std::pair<std::string, const char*> rows[] = {{"", ""},
                                                      {"\0"s, "AA=="},
                                                      {"ab", "YWI="},
                                                      {"\xFB\xFF\xBE", "+/++"},
                                                      {"pass words", "cGFzcyB3b3Jkcw=="}};
  for (const auto& [bytes, text] : rows) {
    EXPECT_EQ(encodeBase64(bytes), text);
    EXPECT_EQ(decodeBase64(text), bytes) << text;
  }
  for (const char* bad :
       {"c2VjcmV0c2Vj1", "ab", "ab=c", "====", "a===", "ab*=", "c2V=c2V0", "c2Vj\n", "YR=="})
    EXPECT_FALSE(decodeBase64(bad)) << bad;
}

}  // namespace
}  // namespace camera::test
