// datetime.cgi: what sets the clock and what does not, the forms of the daylight saving rules, and the reply.
#include <gtest/gtest.h>

#include <array>
#include <sstream>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

// The UTC date and time are those of scripted().time, 0.
constexpr char kState[] =
    "curtime.year=2024 curtime.month=3 curtime.day=5 curtime.hour=7 curtime.minute=8 curtime.second=9 "
    "tzone.timezone=34 tzone.dstenable=0 tzone.dstauto=1 tzone.offset=1:00 tzone.starttime=M3.5.0/02:00 "
    "tzone.stoptime=M10.5.0/03:00:30 ntp.method=0 ntp.timeserver=";
constexpr char kNothing[] = "clean work";
constexpr char kClock[] = "clean set curtime 0 work curtime";
constexpr char kZone[] = "clean set tzone 0 work tzone";
constexpr char kNtp[] = "clean set ntp 0 work ntp";

constexpr char kReply[] =
    "method=0 timeserver= timezone=34 utcdate=1970-01-01 utctime=00:00:00 date=2024-03-05 time=07:08:09 "
    "dstenable=no dstauto=yes offset=1:00 starttime=3.5.0/02:00:00 stoptime=10.5.0/03:00:30 ";

TEST(Datetime, SetsTheClockByHandAloneAndStoresTheZoneAndItsRules) {
  // The query, the state, the lines in which the reply is not the one to a plain read, and the writes.
  const std::array<const char*, 4> rows[] = {
      {"", "", "", ""},
      {"method=2&date=2024-02-29&time=13:05:00", "", "method=2 date=2024-02-29 time=13:05:00", kClock},
      {"method=2&date=2037-1-2&time=3:4:5", "ntp.method=1", "method=2 date=2037-01-02 time=03:04:05",
       "clean set curtime 0 set ntp 0 work curtime,ntp"},
      {"method=2&date=1969-01-01&time=00:00:00&timezone=1", "",
       "method=2 timezone=1 date=1969-01-01 time=00:00:00",
       "clean set tzone 0 set curtime 0 work curtime,tzone"},
      {"method=2&date=2024-03-05&time=07:08:09", "", "method=2", kNothing},
      {"date=2024-02-29&time=13:05:00", "", "", kNothing},
      {"method=1&date=2024-02-29", "ntp.timeserver=a.b", "method=1 timeserver=a.b", kNtp},
      {"method=1&timeserver=ntp-1.example_x", "", "method=1 timeserver=ntp-1.example_x", kNtp},
      {"method=0&timeserver=", "ntp.method=1 ntp.timeserver=a.b", "", kNtp},
      {"timezone=34&dstenable=no&dstauto=yes&offset=1:00", "", "", kNothing},
      {"timezone=87&dstenable=yes&dstauto=no&offset=1:30", "",
       "timezone=87 dstenable=yes dstauto=no offset=1:30", kZone},
      {"offset=-0:30", "", "offset=0:30", kZone},
      {"", "tzone.offset=-02:00", "offset=02:00", ""},
      {"stoptime=12.1.6/23:59:58", "", "stoptime=12.1.6/23:59:58", kZone},
      {"stoptime=9.1.6/2:0", "", "stoptime=9.1.6/2:0:00", kZone},
      {"starttime=3.5.0/02:00", "", "", kNothing},
      {"starttime=03.2.0/02:00", "", "starttime=3.2.0/02:00:00", kZone},
  };
  for (const auto& [query, state, differs, writes] : rows) {
    std::string reply = kReply;
    std::istringstream lines{differs};
    for (std::string line; lines >> line;) {
      const std::size_t at = (" " + reply).find(" " + line.substr(0, line.find('=') + 1));
      reply.replace(at, reply.find(' ', at) - at, line);
    }
    expectRows("datetime.cgi", kState, {{query, state, 200, reply, writes}});
  }
  EXPECT_EQ(scripted().stored("tzone.starttime"), "M3.2.0/02:00");
}

constexpr char kRefused[] =
    "method=2&date=2023-02-29&time=00:00:00 method=2&date=1968-12-31&time=00:00:00 "
    "method=2&date=2038-01-01&time=00:00:00 method=2&date=2024-02&time=00:00:00 "
    "method=2&date=2024-002-01&time=00:00:00 method=2&date=2024-02-01%00&time=00:00:00 "
    "method=2&date=2024-02-01&time=24:00:00 method=2&date=2024-02-01&time=00:60:00 "
    "method=2&date=2024-02-01&time=00:00:60 method=2&date=2024-02-01&time=00:00 method=2&date=2024-02-01 "
    "method=2&time=00:00:00 date=2023-02-29 method=3 method=-1 method=1 method=1&timeserver= timeserver=a+b "
    "timezone=0 timezone=88 dstenable=1 dstauto=Yes offset=0:45 offset=01:00 offset=1:00:00 "
    "starttime=13.1.0/02:00 starttime=0.1.0/02:00 starttime=3.6.0/02:00 starttime=3.0.0/02:00 "
    "starttime=3.1.7/02:00 starttime=3.1.0 starttime=3.1.0/02:00/ starttime=M3.1.0/02:00 "
    "starttime=3.1/02:00 starttime=3.1.0/02 starttime=3.1.0/24:00 stoptime=3.1.0/002:00 stoptime= "
    "timezone=1&zone=1";

TEST(Datetime, RefusesEverythingElse) {
  const std::string longServer = " timeserver=" + std::string(61, 'a');
  const std::string longRule = " starttime=" + std::string(18, '0') + "3.2.0/02:00:00";
  std::istringstream queries{kRefused + longServer + longRule};
  for (std::string query; queries >> query;) expectRefused("datetime.cgi", kState, {query});
  expectRows("datetime.cgi", kState, {{"timezone=1", "ntp.method=1", 400, "", ""}});
}

TEST(Datetime, FailsOnStoredRulesThatCannotBeSplit) {
  expectRows("datetime.cgi", kState,
             {{"", "tzone.starttime=M3.5.0", 500, "", ""},
              {"", "tzone.stoptime=M3.5.0/02", 500, "", ""},
              {"", "tzone.offset=1", 500, "", ""},
              {"method=9", "tzone.starttime=M3.5.0", 500, "", ""},
              {"method=9", "tzone.offset=1", 400, "", ""},
              {"timezone=1", "tzone.offset=1", 500, "", kZone}});
}

TEST(Datetime, ShowsTheCameraClock) {
  scripted().reset();
  scripted().time = 4'102'444'799;
  EXPECT_NE(request("datetime.cgi", "").body.find(" utcdate=2099-12-31 utctime=23:59:59 "),
            std::string::npos);
}

#define LOADED "get zone get ntp get tzone get curtime"

TEST(Datetime, AnswersAsTheStoreDoes) {
  const char* const all = "method=2&date=2024-02-29&time=13:05:00&timezone=1&timeserver=a";
  expectResults(
      "datetime.cgi", kState,
      {{"get ntp", 2, "", 500, "get zone get ntp"},
       {"get tzone", 2, "timezone=1", 500, "get zone get ntp get tzone"},
       {"get curtime", 1, "", 500, LOADED},
       {"", 0, all, 200, LOADED " clean set tzone 0 set curtime 0 set ntp 0 work curtime,ntp,tzone"},
       {"", 0, "timezone=1", 200, LOADED " clean set tzone 0 work tzone get curtime"},
       {"", 0, "timeserver=a", 200, LOADED " clean set ntp 0 work ntp get curtime"},
       {"", 0, "timezone=34", 200, LOADED " clean work"},
       {"set tzone 0", 1, all, 400, LOADED " clean set tzone 0"},
       {"set curtime 0", 2, all, 500, LOADED " clean set tzone 0 set curtime 0"},
       {"set ntp 0", 2, all, 500, LOADED " clean set tzone 0 set curtime 0 set ntp 0"}});
}

}  // namespace
}  // namespace camera::test
