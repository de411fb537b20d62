// The checks of the shared vocabulary against their contracts and boundary values.
#include <climits>
#include <random>

#include "framework/cgilet.h"
#include "framework/value_tables.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

struct NumberRow {
  std::string text;
  int min;
  int max;
  bool acceptable;
  int value;
};

TEST(Numbers, AreAnOptionalMinusAndDigitsWithinTheRange) {
  const NumberRow rows[] = {
      {"1", 1, 12, true, 1},
      {"12", 1, 12, true, 12},
      {"007", 1, 12, true, 7},
      {"0", 1, 12, false, 0},
      {"13", 1, 12, false, 0},
      {"", 1, 12, false, 0},
      {"1a", 1, 12, false, 0},
      {" 1", 1, 12, false, 0},
      {"1 ", 1, 12, false, 0},
      {"+1", 1, 12, false, 0},
      {"-", -9, 9, false, 0},
      {"--1", -9, 9, false, 0},
      {"-0", 0, 0, true, 0},
      {"-9", -9, 9, true, -9},
      {"1\0"s, 1, 12, false, 0},
      {"0x1", 0, 12, false, 0},
      {"2147483647", INT_MIN, INT_MAX, true, INT_MAX},
      {"-2147483648", INT_MIN, INT_MAX, true, INT_MIN},
      {"2147483648", INT_MIN, INT_MAX, false, 0},
      {"-2147483649", INT_MIN, INT_MAX, false, 0},
      {"4294967297", 0, 12, false, 0},
      {"18446744073709551617", 0, 12, false, 0},
      {std::string(400, '9'), 0, INT_MAX, false, 0},
      {std::string(400, '0') + "5", 0, 9, true, 5},
  };
  for (const NumberRow& row : rows) {
    int value = 77;
    EXPECT_EQ(BaseCgilet::CheckRange(row.text, row.min, row.max, &value), row.acceptable) << row.text;
    EXPECT_EQ(value, row.acceptable ? row.value : 77) << row.text;
    EXPECT_EQ(CommonAPI::ChkInt(row.text, row.min, row.max, &value, "", 0) == 0, row.acceptable) << row.text;
    EXPECT_EQ(CommonAPI::checkRange(row.text, row.min, row.max), row.acceptable) << row.text;
  }
  int value = 77;
  EXPECT_EQ(CommonAPI::ChkInt("x", -1, 0, 9, &value, "", 0), 0) << "not given";
  EXPECT_EQ(value, 77);
}

struct CharacterRow {
  std::string text;
  std::string_view extra;
  bool letters, digits, hexDigits;
  bool acceptable;
};

TEST(Characters, AreOfTheAcceptedClassesOrExtra) {
  const CharacterRow rows[] = {
      {"aZ09", "", true, true, false, true},
      {"a b", "", true, true, false, false},
      {"a_b-c.d", "_-.", true, true, false, true},
      {"a/b", "_-.", true, true, false, false},
      {"abc1", "", true, false, false, false},
      {"09af", "", false, false, true, true},
      {"09ag", "", false, false, true, false},
      {"12.5", ".", false, true, false, true},
      {"a\0b"s, "", true, true, false, false},
      {"\xC3\xA9", kPrintableText, true, true, false, false},
      {"a\nb", kPrintableText, true, true, false, false},
      {"a ~\\\"'", kPrintableText, true, true, false, true},
      {"[@`{", "", true, true, false, false},
      {"/:", "", true, true, true, false},
  };
  for (const CharacterRow& row : rows) {
    const int length = static_cast<int>(row.text.size());
    EXPECT_EQ(BaseCgilet::ChkAcptStr(row.text, 0, 99, row.extra, row.letters, row.digits, row.hexDigits),
              row.acceptable ? length : -1)
        << row.text;
    if (!row.hexDigits) {
      EXPECT_EQ(check_accept_str(row.text, row.extra, row.letters, row.digits), row.acceptable) << row.text;
    }
  }
  EXPECT_EQ(CommonAPI::isAlnumStr("a1~", kPunctuation, 32), 0);
  EXPECT_NE(CommonAPI::isAlnumStr("a b", kPunctuation, 32), 0);
  EXPECT_NE(CommonAPI::isAlnumStr("a\0"s, kPunctuation, 32), 0);
  EXPECT_LT(BaseCgilet::isDigit("", ""), 0);
  EXPECT_LT(BaseCgilet::checkHex("12345", 4, 0), 0);
  EXPECT_EQ(BaseCgilet::checkHex("12aF", 4, 0), 4);
  EXPECT_FALSE(CommonAPI::isNum(""));
  EXPECT_FALSE(CommonAPI::isNum("-1"));
  EXPECT_TRUE(CommonAPI::isNum("01"));
}

TEST(Lengths, AreBytesWithinBothBounds) {
  for (const int length : {0, 1, 30, 31}) {
    const std::string text(static_cast<std::size_t>(length), 'x');
    const bool acceptable = length >= 1 && length <= 30;
    EXPECT_EQ(BaseCgilet::checkLength(text, 1, 30), acceptable) << length;
    EXPECT_EQ(BaseCgilet::checkLen(text, 1, 30), acceptable ? length : -1) << length;
    EXPECT_EQ(BaseCgilet::checkLen(length, 1, 30), acceptable ? length : -1) << length;
  }
  EXPECT_FALSE(BaseCgilet::checkLength("a\0b"s, 1, 30));
}

struct WordRow {
  std::string text;
  int index;
  int variant;  // index when variants match their base
};

TEST(Words, MatchWholeAndByCase) {
  static constexpr const char* kModels[] = {"", "ov7740", "ov7740_tzm480", "ov9710"};
  const WordRow rows[] = {
      {"ov7740", 1, 1},    {"ov7740_tzm480", 2, 2}, {"ov9710_720p", -1, 3},
      {"OV9710", -1, -1},  {"ov9710 ", -1, -1},     {"ov97", -1, -1},
      {"", 0, 0},          {"_x", -1, -1},          {"ov9710\0_720p"s, -1, -1},
      {"ov97100", -1, -1},
  };
  for (const WordRow& row : rows) {
    EXPECT_EQ(BaseCgilet::isValidStr(row.text, kModels, 4), row.index) << row.text;
    EXPECT_EQ(BaseCgilet::isValidStr(row.text, kModels, 4, true), row.variant) << row.text;
    EXPECT_EQ(CommonAPI::CmpStr(row.text, kModels, 4, true, true), row.variant) << row.text;
    int index = 77;
    EXPECT_EQ(CommonAPI::CmpStr(row.text, kModels, 4, &index, true, false) == 0, row.index >= 0) << row.text;
    EXPECT_EQ(index, row.index >= 0 ? row.index : 77) << row.text;
  }
  const std::vector<std::string> words{"no", "yes"};
  EXPECT_EQ(BaseCgilet::isValidStr("yes", words, 2), 1);
  EXPECT_EQ(BaseCgilet::isValidStr("yes", words, 1), -1);
  EXPECT_EQ(BaseCgilet::isValidStr("yes ", words, 2), -1);
  EXPECT_EQ(BaseCgilet::isValidStr("", words.data(), 2), -1);
  char copy[4] = "old";
  int index = 77;
  static constexpr const char* kLong[] = {"long"};
  EXPECT_NE(CommonAPI::CmpStr("long", kLong, 1, copy, sizeof copy, &index, true), 0) << "does not fit";
  EXPECT_STREQ(copy, "old");
}

struct AddressRow {
  std::string text;
  bool address;
  bool mask;
};

TEST(Addresses, AreFourNumbersAndMasksAreContiguous) {
  const AddressRow rows[] = {
      {"192.168.1.10", true, false},
      {"0.0.0.0", true, false},
      {"255.255.255.0", true, true},
      {"255.255.255.255", false, true},
      {"128.0.0.0", true, true},
      {"255.255.254.0", true, true},
      {"255.0.255.0", true, false},
      {"0.255.255.255", true, false},
      {"256.1.1.1", false, false},
      {"1.2.3", false, false},
      {"1.2.3.4.5", false, false},
      {"1..3.4", false, false},
      {".1.2.3", false, false},
      {"1.2.3.", false, false},
      {"01.2.3.4", false, false},
      {"1.2.3.4 ", false, false},
      {"", false, false},
      {"-1.2.3.4", false, false},
      {"1.2.3.4\0"s, false, false},
      {"255.255.255.128", true, true},
      {"1.2.3.-0", false, false},
  };
  for (const AddressRow& row : rows) {
    EXPECT_EQ(CommonAPI::ChkIp(row.text) == 0, row.address) << row.text;
    EXPECT_EQ(CommonAPI::ChkMask(row.text) == 0, row.mask) << row.text;
  }
  char first[16] = "";
  EXPECT_EQ(CommonAPI::ChkIp("10.0.0.1", first, nullptr), 0);
  EXPECT_STREQ(first, "10.0.0.1");
}

struct DateRow {
  int year, month, day;
  bool valid;
};

TEST(Dates, AreThoseOfTheCalendar) {
  const DateRow rows[] = {{2024, 2, 29, true},  {2023, 2, 29, false}, {2000, 2, 29, true},
                          {1900, 2, 29, false}, {2024, 4, 31, false}, {2024, 12, 31, true},
                          {2024, 13, 1, false}, {2024, 0, 1, false},  {2024, 1, 0, false},
                          {0, 1, 1, false}};
  for (const DateRow& row : rows) {
    EXPECT_EQ(BaseCgilet::checkDate(row.year, row.month, row.day), row.valid)
        << row.year << "-" << row.month << "-" << row.day;
  }
}

struct SplitRow {
  const char* text;
  const char* separators;
  int count;
  int widths[3];
  bool checkWidths;
  std::vector<std::string> fields;  // none: refused
};

TEST(DateTexts, SplitIntoFieldsOfDigits) {
  const SplitRow rows[] = {
      {"2024-02-29", "-", 3, {4, 2, 2}, true, {"2024", "02", "29"}},
      {"2024-2-9", "-", 3, {4, 2, 2}, true, {"2024", "2", "9"}},
      {"20240-2-9", "-", 3, {4, 2, 2}, true, {}},
      {"2024-02", "-", 3, {4, 2, 2}, true, {}},
      {"-2024-02-29", "-", 3, {4, 2, 2}, true, {}},
      {"2024-02-29-", "-", 3, {4, 2, 2}, true, {}},
      {"2024--29", "-", 3, {4, 2, 2}, true, {}},
      {"1:30", "-+:", 2, {1, 2, 0}, true, {"1", "30"}},
      {"-1:30", "-+:", 2, {1, 2, 0}, true, {"1", "30"}},
      {"+1:30", "-+:", 2, {1, 2, 0}, true, {"1", "30"}},
      {"--1:30", "-+:", 2, {1, 2, 0}, true, {}},
      {":1:30", "-+:", 2, {1, 2, 0}, true, {}},
      {"01:30", "-+:", 2, {1, 2, 0}, true, {}},
      {"13:05:00", ":", 3, {2, 2, 2}, true, {"13", "05", "00"}},
      {"13:5x:00", ":", 3, {2, 2, 2}, true, {}},
      {"03.5.0", ".", 3, {0, 0, 0}, false, {"03", "5", "0"}},
      {"02:00", ":", 0, {2, 2, 2}, true, {"02", "00"}},
      {"02:00:00:00", ":", 0, {2, 2, 2}, true, {}},
      {"1:2:3:4:5", ":", 0, {0, 0, 0}, false, {"1", "2", "3", "4", "5"}},
      {"", ":", 0, {2, 2, 2}, true, {}},
  };
  for (const SplitRow& row : rows) {
    std::vector<std::string> fields;
    const int count = BaseCgilet::DTFormat(row.text, fields, row.separators, row.count, row.widths[0],
                                           row.widths[1], row.widths[2], row.checkWidths);
    EXPECT_EQ(count, row.fields.empty() ? -1 : static_cast<int>(row.fields.size())) << row.text;
    if (count > 0) {
      EXPECT_EQ(fields, row.fields) << row.text;
    }
  }
  EXPECT_TRUE(BaseCgilet::checkTimeRange({"23", "59"}, 2));
  EXPECT_TRUE(BaseCgilet::checkTimeRange({"0", "00", "59"}, 3));
  EXPECT_FALSE(BaseCgilet::checkTimeRange({"24", "00"}, 2));
  EXPECT_FALSE(BaseCgilet::checkTimeRange({"1", "60"}, 2));
  EXPECT_FALSE(BaseCgilet::checkTimeRange({"1"}, 1));
  EXPECT_FALSE(BaseCgilet::checkTimeRange({"1", "2", "3", "4"}, 4));
}

TEST(SeparatedTexts, AreWalkedFieldByField) {
  std::vector<std::string> pieces;
  EXPECT_EQ(BaseCgilet::StrtoVector("a,,b,", ",", pieces), 4);
  EXPECT_EQ(pieces, (std::vector<std::string>{"a", "", "b", ""}));
  EXPECT_EQ(BaseCgilet::StrtoVector("", ",", pieces), 0);
  EXPECT_EQ(BaseCgilet::StrtoVector("a", "", pieces), -1);

  const char* cursor = "1/30 1/2500 -1";
  char first[5];
  char second[5];
  EXPECT_EQ(CommonAPI::GetValBySep(&cursor, " ", "/", first, sizeof first, second, sizeof second), 0);
  EXPECT_EQ(std::string(first) + "|" + second, "1|30");
  EXPECT_EQ(BaseCgilet::getValBySep(&cursor, " ", "/", first, sizeof first, second, sizeof second), 0);
  EXPECT_EQ(std::string(first) + "|" + second, "1|2500");
  EXPECT_EQ(GetAttrValBySep(&cursor, " ", "/", first, sizeof first, second, sizeof second), 0);
  EXPECT_EQ(std::string(first) + "|" + second, "-1|");
  EXPECT_EQ(cursor, nullptr);
  EXPECT_EQ(CommonAPI::GetValBySep(&cursor, " ", "/", first, sizeof first, second, sizeof second), -1);
  cursor = "12345 1";
  EXPECT_EQ(CommonAPI::GetValBySep(&cursor, " ", "", first, sizeof first, nullptr, 0), -2);
}

TEST(Buffers, AreNeverWrittenPastTheirSize) {
  char buffer[8] = "";
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "/mnt", "/", nullptr, 1), 4);
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "usb", "/", nullptr, 0), -1);
  EXPECT_STREQ(buffer, "/mnt");
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "us", "/", nullptr, 0), 7);
  EXPECT_STREQ(buffer, "/mnt/us");
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "too long", "/", nullptr, 1), -1);
  EXPECT_STREQ(buffer, "/mnt/us");
  EXPECT_EQ(CommonAPI::AppendStr(buffer, sizeof buffer, "a", "/", "b", 1), 3);
  EXPECT_STREQ(buffer, "a/b");

  EXPECT_EQ(StrCat(buffer, sizeof buffer, nullptr, "md", 1, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_STREQ(buffer, "md1");
  EXPECT_EQ(StrCat(buffer, sizeof buffer, nullptr, "pir", -1, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_STREQ(buffer, "pir");
  EXPECT_NE(StrCat(buffer, sizeof buffer, "a", "b", 123456, nullptr, nullptr, nullptr, nullptr), 0);
  buffer[0] = '\0';
  EXPECT_EQ(StrCat(buffer, sizeof buffer, nullptr, 10, ","), 0);
  EXPECT_EQ(StrCat(buffer, sizeof buffer, nullptr, 4, ","), 0);
  EXPECT_EQ(StrCat(buffer, sizeof buffer, "x", -1, ","), 0);
  EXPECT_STREQ(buffer, "10,4,x");
  EXPECT_NE(StrCat(buffer, sizeof buffer, nullptr, 2, ","), 0);
  EXPECT_STREQ(buffer, "10,4,x");

  EXPECT_EQ(CommonAPI::CopyStr(buffer, sizeof buffer, -12345, nullptr), 6);
  EXPECT_STREQ(buffer, "-12345");
  EXPECT_EQ(CommonAPI::CopyStr(buffer, sizeof buffer, INT_MIN, nullptr), -1);
  EXPECT_EQ(CommonAPI::CopyStr(buffer, sizeof buffer, 0, "12345678"), -1);
}

TEST(Base64, GivesEveryByteStringBackAndRefusesWhatItDoesNotWrite) {
  std::mt19937 random(1);
  for (std::size_t length = 0; length < 70; ++length) {
    std::string data(length, '\0');
    for (char& c : data) c = static_cast<char>(random());
    char encoded[100];
    char decoded[100];
    const int size = CommonAPI::b64_encode(data.data(), data.size(), encoded, sizeof encoded);
    ASSERT_EQ(size, static_cast<int>((length + 2) / 3 * 4));
    ASSERT_EQ(CommonAPI::b64_decode(encoded, decoded, sizeof decoded), static_cast<int>(length));
    EXPECT_EQ(std::string(decoded, length), data);
  }
  char out[8];
  EXPECT_EQ(CommonAPI::b64_encode("secret", 6, out, 8), -1);
  EXPECT_EQ(CommonAPI::b64_decode("c2VjcmV0c2Vj", out, sizeof out), -1);
  for (const char* bad : {"a", "ab", "abc", "ab=c", "====", "a===", "ab*=", "c2V=c2V0", "c2Vj\n", "YR=="}) {
    EXPECT_EQ(CommonAPI::b64_decode(bad, out, sizeof out), -1) << bad;
  }
}

TEST(ShellTexts, StayBetweenTheirQuotes) {
  EXPECT_EQ(strongEncode("/mnt/usb/A-1_b.avi"), "/mnt/usb/A-1_b.avi");
  const std::string hostile = "a'; echo injected; '$(echo x)`id`\\\"\n b\0c"s;
  const std::string command = "printf %s '" + strongEncode(hostile) + "'";
  FILE* pipe = popen(command.c_str(), "r");
  std::string output;
  for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) output += static_cast<char>(c);
  pclose(pipe);
  EXPECT_EQ(output, "a'; echo injected; '$(echo x)`id`\\\"\n b");
  EXPECT_EQ(strongEncode("/x/.\0./.\0./y"s).find(".."), std::string::npos) << "dots must not meet";
}

TEST(Changes, AreMarkedOnlyWhenAFieldDiffers) {
  struct {
    char text[8] = "old";
    std::uint8_t byte = 1;
    std::int32_t number = 5;
  } record;
  unsigned changes = 0;
  InfCgilet::isParamChanged("old", record.text, &changes);
  InfCgilet::isParamChanged(1, &record.byte, &changes);
  InfCgilet::isParamChanged("5", &record.number, &changes);
  EXPECT_EQ(changes, 0U);
  InfCgilet::isParamChanged("longer than it", record.text, &changes);
  InfCgilet::isParamChanged("a\0b"s, record.text, &changes);
  EXPECT_EQ(changes, 0U) << "a text that does not fit changes nothing";
  InfCgilet::isParamChanged("new", record.text, &changes);
  EXPECT_STREQ(record.text, "new");
  EXPECT_NE(changes, 0U);
  InfCgilet::isParamChanged("7", &record.byte, &changes);
  EXPECT_EQ(record.byte, 7);
  EXPECT_FALSE(BaseCgilet::changeUnsignedChar(&record.byte, 7));
  EXPECT_TRUE(BaseCgilet::changeUnsignedChar(&record.byte, 0));

  bool changed = false;
  CommonAPI::CmpIdx(-1, &record.byte, &changed);
  CommonAPI::CmpInt(-1, &record.number, &changed);
  CommonAPI::CmpStr("x", -1, record.text, &changed);
  EXPECT_FALSE(changed);
  CommonAPI::CmpStr("", 0, record.text, &changed);
  EXPECT_STREQ(record.text, "");
  EXPECT_TRUE(changed) << "a given empty text empties the field";
}

}  // namespace
}  // namespace camera::test
