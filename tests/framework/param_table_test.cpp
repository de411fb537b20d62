// The driver of declared parameters: what it refuses, what it merges and what it reports.
#include "framework/param_table.h"

#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

class TableCgilet final : public InfCgilet {
 public:
  explicit TableCgilet(ParamTable::UnknownNames unknown = ParamTable::UnknownNames::kRefuse)
      : table{{
                  integerParam("port", 1, 99).required().into(port, changed),
                  choiceParam("enable", kNoYes).into(enable, changed),
                  choiceParam("provider", kStopDel).into(provider, changed),
                  textParam("name", 0, 5, "_").into(name, changed),
                  digitsParam("ip", 1, 15, ".")
                      .also([](std::string_view ip) { return CommonAPI::ChkIp(ip); })
                      .into(ip, changed),
                  hexParam("mask", 4, 4),
                  integerParam("level", 0, 9).startingAt(3),
                  choiceParam("pir", kNoYes).unhandledIf(true),
              },
              unknown} {}
  void onLoad() override {}
  void onApply() override {
    accepted = table.check(*this);
    if (accepted) table.merge();
  }
  void onReply() override {
    table.reply(*this);
    infOK();
  }

  std::int32_t port = 80;
  std::uint8_t enable = 0;
  char provider[8] = "stop";
  char name[8] = "cam";
  char ip[16] = "10.0.0.1";
  bool changed = false, accepted = false;
  ParamTable table;
};

TEST(ParamTable, ChecksMergesAndReports) {
  const std::tuple<const char*, bool, const char*> rows[] = {
      {"port=80&name=cam", false, "port=80 enable=no provider=stop name=cam ip=10.0.0.1 mask= level=3 "},
      {"port=8&enable=yes&provider=del&name=a_1&ip=1.2.3.4&mask=0aF9&level=9&pir=anything", true,
       "port=8 enable=yes provider=del name=a_1 ip=1.2.3.4 mask=0aF9 level=9 "},
  };
  for (const auto& [query, changed, reply] : rows) {
    TableCgilet cgilet;
    std::string response = capture(get(query), [&] { serve(cgilet); });
    for (char& c : response) c = c == '\n' ? ' ' : c;
    EXPECT_TRUE(cgilet.accepted) << query;
    EXPECT_EQ(cgilet.changed, changed) << query;
    EXPECT_EQ(response.substr(response.find("\r \r ") + 4), reply) << query;
  }
}

TEST(ParamTable, Refuses) {
  // The first lacks what is required.
  for (const char* query : {"enable=yes", "port=80&other=1", "port%00=8", "port=0", "port=", "port=8%00",
                            "port=8&enable=Yes", "port=8&name=abcdef", "port=8&name=a.b", "port=8&name=a%00b",
                            "port=8&ip=1.2.3", "port=8&ip=", "port=8&mask=12345", "port=8&mask=12g4"}) {
    TableCgilet cgilet;
    capture(get(query), [&] { serve(cgilet); });
    EXPECT_FALSE(cgilet.accepted || cgilet.changed) << query;
  }
}

TEST(ParamTable, TellsGivenFromEmptyAndAbsentAndIgnoresUnknownNamesWhereItSaysSo) {
  TableCgilet cgilet{ParamTable::UnknownNames::kIgnore};
  capture(get("port=9&name=&a=1&b=2&c=3&d=4&e=5&f=6&g=7"), [&] { serve(cgilet); });
  EXPECT_TRUE(cgilet.table.given("name") && cgilet.table.givenEmpty("name"));
  EXPECT_FALSE(cgilet.table.given("ip") || cgilet.table.givenEmpty("ip") || cgilet.table.givenEmpty("port"));
  EXPECT_TRUE(cgilet.accepted && cgilet.table.integer("port") == 9 && *cgilet.name == '\0');
}

}  // namespace
}  // namespace camera::test
