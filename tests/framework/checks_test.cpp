// The checks that parameter rows and endpoints are made of, on both sides of their limits.
#include "framework/checks.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <tuple>

#include "framework/base64.h"
#include "platform/shell.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

// What a check accepts and what it refuses, separated by bars.
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

TEST(Checks, OfADateKnowTheCalendar) {
  const std::tuple<int, int, int, bool> rows[] = {
      {2024, 2, 29, true},  {2023, 2, 29, false}, {1900, 2, 29, false},
      {2000, 2, 29, true},  {2023, 12, 31, true}, {2023, 4, 31, false},
      {2023, 13, 1, false}, {2023, 0, 1, false},  {2023, 1, 0, false}};
  for (const auto& [year, month, day, expected] : rows)
    EXPECT_EQ(isCalendarDate(year, month, day), expected) << year << "-" << month << "-" << day;
}

TEST(Base64, GivesEveryByteStringBackAndRefusesWhatItDoesNotWrite) {
  std::mt19937 random(1);
  for (std::size_t length = 0; length < 70; ++length) {
    std::string data(length, '\0');
    for (char& c : data) c = static_cast<char>(random());
    const std::string encoded = encodeBase64(data);
    ASSERT_EQ(encoded.size(), (length + 2) / 3 * 4);
    EXPECT_EQ(decodeBase64(encoded), data);
  }
  for (const char* bad :
       {"c2VjcmV0c2Vj1", "ab", "ab=c", "====", "a===", "ab*=", "c2V=c2V0", "c2Vj\n", "YR=="})
    EXPECT_FALSE(decodeBase64(bad)) << bad;
}

TEST(ShellTexts, StayBetweenTheirQuotes) {
  const std::string hostile = "a'; echo injected; '$(echo x)`id`\\\"\n b\0c"s;
  FILE* pipe = popen(("printf %s '" + shellQuoted(hostile) + "'").c_str(), "r");
  char output[100];
  const std::size_t size = fread(output, 1, sizeof output, pipe);
  pclose(pipe);
  EXPECT_EQ(std::string(output, size), "a'; echo injected; '$(echo x)`id`\\\"\n b");
}

}  // namespace
}  // namespace camera::test
