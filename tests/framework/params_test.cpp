// Parameter tables: what they accept, the message if they reject a request, and the reply.
#include "framework/params.h"

#include <gtest/gtest.h>

#include "framework/reply.h"
#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

// Fields of every type, an array with its index, and fields on which bounds, words and rows depend.
struct State {
  std::int32_t id = 0;
  std::int32_t rate[3] = {7, 8, 9};
  std::uint8_t codec = 0;
  char path[8] = "a";
  char mask[16] = "0000";
  std::uint8_t level = 50;
  char word[8] = "stop";
  std::string_view bytes = "-";
  char ip[16] = "10.0.0.1";
  bool hasSensor = true;
  std::uint8_t sensor = 1;
  std::uint8_t tone = 1;
};

constexpr const char* kStopDel[] = {"stop", "del"};
constexpr const char* kLevels[] = {"50", "55", "60"};

Bounds maskLength(const State& state) {
  const int length = static_cast<int>(std::strlen(state.mask));
  return {length, length};
}
bool hasSensor(const State& state) {
  return state.hasSensor;
}
Words tones(const State& state) {
  return Words{kLevels}.subspan(state.hasSensor ? 1 : 0);
}
bool takeDouble(std::string_view value, State& state) {
  state.rate[0] = 2 * leadingInteger(value);
  return !value.empty();
}
bool isAddress(std::string_view text) {
  return parseIpv4(text);
}

constexpr auto kRows = paramRows<State>(
    integerParam<&State::id>("id", 0, 2).required(), integerParam<&State::rate, &State::id>("rate", -5, 99),
    choiceParam<&State::codec>("codec", kNoYes), textParam<&State::path>("path", 1, 7, kNameText),
    textParam<&State::mask>("mask", 0, 0, "", kHexDigits).within<maskLength>("as long as the stored one"),
    choiceParam<&State::level>("level", kLevels).storingNumber(), choiceParam<&State::word>("word", kStopDel),
    textParam<&State::bytes>("bytes", 0, 6, "", kAnyBytes),
    textParam<&State::ip>("ip", 0, 15, ".", kDigits).also(isAddress, "an address, or empty"),
    choiceParam<&State::sensor>("sensor", kOffOn).onlyIf<hasSensor>(),
    choiceParam<&State::tone>("tone").among<tones>("those of the sensor"),
    ownParam<takeDouble, State>("double", "a number"), ignoredParam("z"));

// The refusal, or what the reply then shows.
std::string take(std::string_view form, State state = {}, const ParamList& list = kRows.list(),
                 std::vector<std::string>* ignored = nullptr) {
  Queries queries;
  parseForm(form, queries);
  std::uint64_t given = 0;
  Refusal refusal;
  std::vector<std::string> names;
  const bool isTaken = list.take(queries, &state, &given, ignored != nullptr ? ignored : &names, &refusal);
  EXPECT_EQ(isTaken, refusal.message.empty()) << form;
  for (std::size_t i = 0; i < list.rows.size(); ++i)
    EXPECT_TRUE(!isTaken || (given >> i & 1) == queries.count(list.rows[i].name)) << list.rows[i].name;
  if (!isTaken) return refusal.parameter + ": " + refusal.message;
  Reply reply;
  list.reply(reply, &state);
  const std::string response = capture({}, [&] { reply.send(); });
  return response.substr(response.find("\r\n\r\n") + 4);
}

TEST(Params, ATakenRequestShowsInTheReply) {
  EXPECT_EQ(take("id=0"),
            "id=0\nrate=7\ncodec=no\npath=a\nmask=0000\nlevel=50\nword=stop\nbytes=-\nip=10.0.0.1\nsensor="
            "on\ntone=60\n");
  EXPECT_EQ(take("id=2&codec=yes&rate=-5&path=x_.-&mask=0aF9&level=60&word=del&bytes=%00%ff%26+&ip=&sensor="
                 "off&tone=55&z=%00"),
            "id=2\nrate=-5\ncodec=yes\npath=x_.-\nmask=0aF9\nlevel=60\nword=del\nbytes=%00\xEF\xBF\xBD& "
            "\nip=\nsensor=off\ntone=55\n");
  EXPECT_EQ(take("id=0&double=21").substr(0, 13), "id=0\nrate=42\n");
  EXPECT_EQ(take("id=1&sensor=maybe", {.hasSensor = false}).find("sensor"), std::string::npos);
}

TEST(Params, ARefusalNamesTheParameterAndWhatIsAccepted) {
  const std::pair<std::string, std::string> rows[] = {
      {"codec=yes", "id: required: 0 to 2"},
      {"id=0%00", "id: 0 to 2"},
      {"id=0&codec=Yes", "codec: no or yes"},
      {"id=0&rate=-6", "rate: -5 to 99"},
      {"id=0&path=", "path: 1 to 7 letters, digits, _ - ."},
      {"id=0&path=a%00", "path: 1 to 7 letters, digits, _ - ."},
      {"id=0&mask=000g", "mask: 4 hexadecimal digits"},
      {"id=0&level=1", "level: 50, 55 or 60"},
      {"id=0&ip=1.2.3", "ip: an address, or empty"},
      {"id=0&tone=50", "tone: 55 or 60"},
      {"id=0&double=", "double: a number"},
      {"id=0&colour=1", "colour: no such parameter"},
      {"id=0&id%00=1", "id%00: no such parameter"},
      {"id=0&" + std::string(63, 'x') + "\xE2\x82\xAC", std::string(63, 'x') + "...: no such parameter"}};
  for (const auto& [form, refusal] : rows) {
    std::string told = take(form);
    for (std::size_t at = told.find('\0'); at != told.npos; at = told.find('\0')) told.replace(at, 1, "%00");
    EXPECT_EQ(told, refusal) << form;
  }
  EXPECT_EQ(acceptedBy(kRows.rows[4], nullptr), "as long as the stored one");
  EXPECT_EQ(acceptedBy(kRows.rows[10], nullptr), "those of the sensor");
}

TEST(Params, UnknownNamesAreIgnoredUpToANumberWhereTheTableSaysSo) {
  static constexpr auto kIgnoring = kRows.ignoringUnknown(3);
  EXPECT_EQ(take("id=1&a=1&b=2", {}, kIgnoring.list()), take("id=1"));
  EXPECT_EQ(take("id=1&a=1&b=2&c=3", {}, kIgnoring.list()),
            "a: no such parameter (a request has at most 3 here)");
}

TEST(Params, WhatIsIgnoredIsNamed) {
  static constexpr auto kIgnoring = kRows.ignoringUnknown();
  std::vector<std::string> ignored;
  take("id=1&z=secret&sensor=on&path=b&brightnes=55&=1", {.hasSensor = false}, kIgnoring.list(), &ignored);
  EXPECT_EQ(ignored, (std::vector<std::string>{"sensor", "z", "", "brightnes"}));
}

}  // namespace
}  // namespace camera::test
