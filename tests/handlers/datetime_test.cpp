// datetime.cgi: what sets the clock and what does not, the forms of the daylight saving rules, and the reply.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kDatetime{
    .cgi = "datetime.cgi",
    .state =
        "curtime.year=2024 curtime.month=3 curtime.day=5 curtime.hour=7 curtime.minute=8 curtime.second=9 "
        "tzone.timezone=34 tzone.dstenable=0 tzone.dstauto=1 tzone.offset=1:00 tzone.starttime=M3.5.0/02:00 "
        "tzone.stoptime=M10.5.0/03:00:30 ntp.method=0 ntp.timeserver=",
    .reply =
        "method=0&timeserver=&timezone=34&utcdate=1970-01-01&utctime=00:00:00&date=2024-03-05&time=07:08:09&"
        "dstenable=no&dstauto=yes&offset=1:00&starttime=3.5.0/02:00:00&stoptime=10.5.0/03:00:30",
    .writes = "set tzone 0",
    .readsBack = false};
constexpr char kNtp[] = "set ntp 0";

TEST(Datetime, SetsTheClockByHandAloneAndStoresTheZoneAndItsRules) {
  kDatetime.accepts("method=2&date=2024-02-29&time=13:05:00", "", "set curtime 0");
  kDatetime.accepts("method=2&date=1969-01-01&time=00:00:00&timezone=1", "", "set tzone 0 set curtime 0");
  kDatetime.accepts("method=1&timeserver=ntp-1.example_x", "", kNtp);
  kDatetime.accepts("method=0&timeserver=", "ntp.method=1 ntp.timeserver=a.b", kNtp);
  kDatetime.accepts(
      "timezone=34&dstenable=no&dstauto=yes&offset=1:00 timezone=87&dstenable=yes&dstauto=no&offset=1:30 "
      "stoptime=12.1.6/23:59:58");
  kDatetime.accepts({{"", "time=4102444799", "utcdate=2099-12-31&utctime=23:59:59"},
                     {"method=2&date=2037-1-2&time=3:4:5", "ntp.method=1",
                      "method=2&date=2037-01-02&time=03:04:05", "set curtime 0 set ntp 0"},
                     {"method=2&date=2024-03-05&time=07:08:09", "", "method=2", ""},
                     {"date=2024-02-29&time=13:05:00", "", ""},
                     {"method=1&date=2024-02-29", "ntp.timeserver=a.b", "method=1", kNtp},
                     {"offset=-0:30", "", "offset=0:30"},
                     {"", "tzone.offset=-02:00", "offset=02:00"},
                     {"stoptime=9.1.6/2:0", "", "stoptime=9.1.6/2:0:00"},
                     {"starttime=3.5.0/02:00", "", ""},
                     {"starttime=03.2.0/02:00", "", "starttime=3.2.0/02:00:00"}});
  EXPECT_EQ(scripted().stored("tzone.starttime"), "M3.2.0/02:00");
}

TEST(Datetime, RefusesEverythingElse) {
  kDatetime.refuses(
      "method=2&!date=2023-02-29&time=00:00:00 method=2&!date=1968-12-31&time=00:00:00 "
      "method=2&!date=2038-01-01&time=00:00:00 method=2&!date=2024-02&time=00:00:00 "
      "method=2&!date=2024-002-01&time=00:00:00 method=2&!date=2024-02-01%00&time=00:00:00 "
      "method=2&date=2024-02-01&!time=24:00:00 method=2&date=2024-02-01&!time=00:60:00 "
      "method=2&date=2024-02-01&!time=00:00:60 method=2&date=2024-02-01&!time=00:00 "
      "method=2&date=2024-02-01&!time method=2&time=00:00:00&!date date=2023-02-29 method=3 method=-1 "
      "!method=1&!timeserver !method=1&!timeserver= timeserver=a+b timezone=0 timezone=88 dstenable=1 "
      "dstauto=Yes offset=0:45 offset=--1:30 offset=:1:30 offset=1 method=2&time=00:00:00&!date=-2024-2-9 "
      "method=2&time=00:00:00&!date=2024-2-9x offset=01:00 offset=1:00:00 starttime=13.1.0/02:00 "
      "starttime=0.1.0/02:00 "
      "starttime=3.6.0/02:00 starttime=3.0.0/02:00 starttime=3.1.7/02:00 starttime=3.1.0 "
      "starttime=3.1.0/02:00/ starttime=M3.1.0/02:00 starttime=3.1/02:00 starttime=3.1.0/02 "
      "starttime=3.1.0/24:00 stoptime=3.1.0/002:00 stoptime= timezone=1&!zone=1");
  kDatetime.refuses("timeserver=" + std::string(61, 'a'));
  kDatetime.refuses("starttime=" + std::string(18, '0') + "3.2.0/02:00:00");
  kDatetime.refuses("timezone=1&!method&!timeserver", "ntp.method=1");
}

TEST(Datetime, FailsOnStoredRulesThatCannotBeSplit) {
  for (const char* state : {"tzone.starttime=M3.5.0", "tzone.stoptime=M3.5.0/02", "tzone.offset=1"})
    kDatetime.refuses("!", state, 500);
  kDatetime.refuses("method=9", "tzone.starttime=M3.5.0", 500);
  kDatetime.refuses("method=9", "tzone.offset=1");
  scripted().reset(kDatetime.state + " tzone.starttime=none");
  scripted().results = {{"set tzone 0", 1}};
  EXPECT_TRUE(isFailure(request(kDatetime.cgi, "starttime=3.2.0/02:00"), 400));
}

}  // namespace
}  // namespace camera::test
