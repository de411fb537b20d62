// The checks of the shared vocabulary against their contracts and boundary values.
#include <climits>
#include <random>
#include <tuple>

#include "framework/cgilet.h"
#include "framework/value_tables.h"

namespace camera::test {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

Texts split(const std::string& text) {
  Texts pieces;
  BaseCgilet::StrtoVector(text, "|", pieces);
  return pieces;
}

// What a check accepts and what it refuses, separated by bars.
TEST(Checks, AcceptOnly) {
  using Text = std::string_view;
  const std::tuple<bool (*)(Text), std::string, std::string> rows[] = {
      {[](Text text) { return BaseCgilet::CheckRange(text, 1, 12); }, "1|12", "0|13"},
      {[](Text text) { return BaseCgilet::CheckRange(text, INT_MIN, INT_MAX); }, "-0",
       "|1a| 1|1 |+1|-|--1|1\0|2147483648|-2147483649|18446744073709551617"s},
      {[](Text text) { return check_accept_str(text, "_-.", true, true); }, "|a_b-c.d|azAZ09",
       "a b|[|@|`|{|/|:|a\0b"s},
      {[](Text text) { return check_accept_str(text, "~ \\\"'", true, false); }, "a ~\\\"'",
       "\xC3\xA9|a\nb|a1"},
      {[](Text text) { return BaseCgilet::checkHex(text, 4, 0) == 4; }, "09af|19AF", "12345|123|000g"},
      {[](Text text) { return BaseCgilet::isDigit(text, ".") > 0; }, "12.5", "|a"},
      {[](Text text) { return CommonAPI::isNum(text); }, "01", "|-1"},
      {[](Text text) { return CommonAPI::isAlnumStr(text, kPunctuation, 32) == 0; }, "a1~", "a b|a\0"s},
      {[](Text text) { return BaseCgilet::checkLength(text, 2, 4); }, "12|1234", "1|12345"},
      {[](Text text) { return CommonAPI::ChkIp(text) == 0; }, "192.168.1.10|0.0.0.0|255.255.255.0",
       "255.255.255.255|256.1.1.1|1.2.3|1.2.3.4.5|1..3.4|01.2.3.4|1.2.3.4 ||1.2.3.4\0|1.2.3.-0"s},
      {[](Text text) { return CommonAPI::ChkMask(text) == 0; }, "255.255.255.255|128.0.0.0",
       "0.0.0.0|255.0.255.0|0.255.255.255|255.255.255"}};
  for (const auto& [accepts, good, bad] : rows) {
    for (const std::string& text : split(good)) EXPECT_TRUE(accepts(text)) << text;
    for (const std::string& text : split(bad)) EXPECT_FALSE(accepts(text)) << testing::PrintToString(text);
  }
}

TEST(Words, MatchWholeAndByCase) {
  static constexpr const char* kModels[] = {"", "ov7740", "ov7740_tzm480", "ov9710"};
  // The second position is the one when variants match their base.
  const std::tuple<std::string, int, int> rows[] = {
      {"ov7740_tzm480", 2, 2}, {"ov9710_720p", -1, 3},     {"OV9710", -1, -1}, {"ov97", -1, -1}, {"", 0, 0},
      {"_x", -1, -1},          {"ov9710\0_720p"s, -1, -1}, {"ov97100", -1, -1}};
  for (const auto& [text, index, variant] : rows) {
    EXPECT_EQ(BaseCgilet::isValidStr(text, kModels, 4), index) << text;
    EXPECT_EQ(BaseCgilet::isValidStr(text, kModels, 4, true), variant) << text;
  }
  EXPECT_EQ(BaseCgilet::isValidStr("yes", Texts{"no", "yes"}, 1), -1) << "it is behind the count";
}

TEST(Buffers, AreNeverWrittenPastTheirSize) {
  char buffer[8] = "";
  char second[5];
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "/mnt", "/", nullptr, 1), 4);
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "usb", "/", nullptr, 0), -1);
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "us", "/", nullptr, 0), 7);
  EXPECT_STREQ(buffer, "/mnt/us");
  EXPECT_NE(StrCat(buffer, sizeof buffer, "a", "b", 123456, nullptr, nullptr, nullptr, nullptr), 0);
  for (const int number : {10, 423}) EXPECT_EQ(StrCat(buffer, sizeof buffer, nullptr, number, ","), 0);
  EXPECT_NE(StrCat(buffer, sizeof buffer, nullptr, 2, ","), 0);
  EXPECT_STREQ(buffer, "10,423");
  EXPECT_EQ(CommonAPI::CopyStr(buffer, sizeof buffer, 0, "12345678"), -1);
  for (const char* tooLong : {"12345678 1", "1/23456"})
    EXPECT_EQ(GetAttrValBySep(&tooLong, " ", "/", buffer, sizeof buffer, second, sizeof second), -2);
}

TEST(Base64, GivesEveryByteStringBackAndRefusesWhatItDoesNotWrite) {
  std::mt19937 random(1);
  char encoded[100];
  char decoded[100];
  for (std::size_t length = 0; length < 70; ++length) {
    std::string data(length, '\0');
    for (char& c : data) c = static_cast<char>(random());
    const int size = CommonAPI::b64_encode(data.data(), length, encoded, sizeof encoded);
    ASSERT_EQ(size, static_cast<int>((length + 2) / 3 * 4));
    ASSERT_EQ(CommonAPI::b64_decode(encoded, decoded, sizeof decoded), static_cast<int>(length));
    EXPECT_EQ(std::string(decoded, length), data);
  }
  EXPECT_EQ(CommonAPI::b64_encode("secret", 6, encoded, 8), -1);
  for (const char* bad : {"c2VjcmV0c2Vj", "ab", "ab=c", "====", "a===", "ab*=", "c2V=c2V0", "c2Vj\n", "YR=="})
    EXPECT_EQ(CommonAPI::b64_decode(bad, decoded, 8), -1) << bad;
}

TEST(ShellTexts, StayBetweenTheirQuotes) {
  const std::string hostile = "a'; echo injected; '$(echo x)`id`\\\"\n b\0c"s;
  FILE* pipe = popen(("printf %s '" + strongEncode(hostile) + "'").c_str(), "r");
  char output[100];
  const std::size_t size = fread(output, 1, sizeof output, pipe);
  pclose(pipe);
  EXPECT_EQ(std::string(output, size), "a'; echo injected; '$(echo x)`id`\\\"\n b");
}

TEST(Changes, AreMarkedOnlyWhenAFieldDiffers) {
  char text[8] = "old";
  std::uint8_t byte = 1;
  unsigned changes = 0;
  bool changed = false;
  for (const std::string& same : {"old"s, "too long"s, "a\0b"s})
    InfCgilet::isParamChanged(same, text, &changes);
  InfCgilet::isParamChanged("1", &byte, &changes);
  CommonAPI::CmpStr("x", -1, text, &changed);
  EXPECT_TRUE(changes == 0 && !changed) << "what is equal, does not fit or was not given changes nothing";
  InfCgilet::isParamChanged("7", &byte, &changes);
  CommonAPI::CmpStr("", 0, text, &changed);
  EXPECT_TRUE(changes == 1 && changed && byte == 7 && *text == '\0');
}

}  // namespace
}  // namespace camera::test
