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
  bool changed = false;
  bool accepted = false;
  ParamTable table;
};

struct TableRow {
  const char* query;
  bool accepted;
  bool changed;
  const char* reply;
};

constexpr char kUnchanged[] = "port=80 enable=no provider=stop name=cam ip=10.0.0.1 mask= level=3 ";

TEST(ParamTable, ChecksMergesAndReports) {
  const TableRow rows[] = {
      {"port=80", true, false, kUnchanged},
      {"port=80&enable=no&name=cam", true, false, kUnchanged},
      {"port=8&enable=yes&provider=del&name=a_1&ip=1.2.3.4&mask=0aF9&level=9&pir=anything", true, true,
       "port=8 enable=yes provider=del name=a_1 ip=1.2.3.4 mask=0aF9 level=9 "},
      {"port=80&name=", true, true, "port=80 enable=no provider=stop name= ip=10.0.0.1 mask= level=3 "},
      {"enable=yes", false, false, kUnchanged},  // the required one is missing
      {"port=80&other=1", false, false, kUnchanged},
      {"port=0", false, false, kUnchanged},
      {"port=", false, false, kUnchanged},
      {"port=8%00", false, false, kUnchanged},
      {"port=8&enable=Yes", false, false, kUnchanged},
      {"port=8&name=abcdef", false, false, kUnchanged},
      {"port=8&name=a.b", false, false, kUnchanged},
      {"port=8&name=a%00b", false, false, kUnchanged},
      {"port=8&ip=1.2.3", false, false, kUnchanged},
      {"port=8&ip=", false, false, kUnchanged},
      {"port=8&mask=12345", false, false, kUnchanged},
      {"port=8&mask=12g4", false, false, kUnchanged},
      {"port%00=8", false, false, kUnchanged},
  };
  for (const TableRow& row : rows) {
    TableCgilet cgilet;
    std::string response = capture(get(row.query), [&] { serve(cgilet); });
    for (char& c : response) c = c == '\n' ? ' ' : c;
    EXPECT_EQ(cgilet.accepted, row.accepted) << row.query;
    EXPECT_EQ(cgilet.changed, row.changed) << row.query;
    if (row.accepted) {
      EXPECT_EQ(response.substr(response.find("\r \r ") + 4), row.reply) << row.query;
    }
  }
}

TEST(ParamTable, TellsGivenFromEmptyAndAbsent) {
  TableCgilet cgilet;
  capture(get("port=80&name="), [&] { serve(cgilet); });
  EXPECT_TRUE(cgilet.table.given("name"));
  EXPECT_TRUE(cgilet.table.givenEmpty("name"));
  EXPECT_FALSE(cgilet.table.given("ip"));
  EXPECT_FALSE(cgilet.table.givenEmpty("ip"));
  EXPECT_FALSE(cgilet.table.givenEmpty("port"));
  EXPECT_EQ(cgilet.table.integer("port"), 80);
}

TEST(ParamTable, IgnoresUnknownNamesWhereItSaysSo) {
  TableCgilet cgilet{ParamTable::UnknownNames::kIgnore};
  capture(get("port=9&a=1&b=2&c=3&d=4&e=5&f=6&g=7&h=8"), [&] { serve(cgilet); });
  EXPECT_TRUE(cgilet.accepted);
  EXPECT_EQ(cgilet.port, 9);
}

}  // namespace
}  // namespace camera::test
