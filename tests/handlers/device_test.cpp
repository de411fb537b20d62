// wlansurvey.cgi, camera_info.cgi and datetime.cgi: the networks of a survey, and how the clock is set.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

// Some lines of the survey name networks that the camera cannot join; the last seven are malformed.
const Endpoint kSurvey{
    "wlansurvey.cgi",
    "site=A+b,NONE,OPEN,Infra,1,-50 site=B,WEP,OPEN,Adhoc,14,-51 site=B,WEP,SHARED,infra,2,-80 "
    "site=,NONE,OPEN,Infra,8,-60 site=H,AES,WPA,Infra,8,-60 site=H,WPA2,WPA2-PSK,Infra,8,-60 "
    "site=H,NONE,SHARED,Infra,8,-60 site=D,AES,WPA2-PSK,Infra,4,-81 site=E,TKIP,WPA-PSK,,5,-90 "
    "site=F,NONE,WPA-PSK,Infra,7,-91 site=H,NONE,OPEN,Infra,8,-60, site=H,NONE,OPEN,Infra,8,-60x "
    "site=H,123456789012,OPEN,Infra,8,-60 site=H,NONE,OPEN,Infra,,-60 "
    "site=H,NONE,OPEN,123456789012,8,-60 site=H,NONE,OPEN,Infra,2147483648,-60 "
    "site=12345678901234567890123456789012345678901234567890123456,NONE,OPEN,Infra,1,-50",
    "ssid=A b&signal=100&mode=infrastructure&channel=1&auth=open&encryption=none&"
    "ssid=B&signal=99&mode=Ad-hoc&channel=14&auth=open&encryption=WEP&"
    "ssid=B&signal=24&mode=Ad-hoc&channel=2&auth=shared&encryption=WEP&"
    "ssid=D&signal=23&mode=infrastructure&channel=4&auth=WPA2-PSK&encryption=AES&"
    "ssid=E&signal=0&mode=Ad-hoc&channel=5&auth=WPA-PSK&encryption=TKIP&"
    "ssid=F&signal=0&mode=infrastructure&channel=7&auth=WPA-PSK&encryption=none"};

TEST(WlanSurvey, ListsTheNetworksThatTheCameraCanJoin) {
  kSurvey.accepts("");
  kSurvey.refuses("!", "product.wireless=0", 404);
  kSurvey.refuses("a=1", "product.unreadable=1");
  EXPECT_EQ(scripted().history({"ask"}), "");
}

TEST(CameraInfo, SaysThatTheDiskIsFull) {
  for (const bool isFull : {true, false}) {
    scripted().reset();
    scripted().results["set host"] = 2;
    scripted().isFull = isFull;
    EXPECT_EQ(
        request("camera_info.cgi", "name=hall").body,
        std::string{"error=500&message=settings: host cannot be stored"} + (isFull ? ": no space left" : ""));
  }
}

const Endpoint kDatetime{
    .cgi = "datetime.cgi",
    .state =
        "curtime.year=2024 curtime.month=3 curtime.day=5 curtime.hour=7 curtime.minute=8 curtime.second=9 "
        "tzone.timezone=34 tzone.dstenable=0 tzone.dstauto=1 tzone.offset=1:00 tzone.starttime=M3.5.0/02:00 "
        "tzone.stoptime=M10.5.0/03:00:30 ntp.method=0 ntp.timeserver=",
    .reply =
        "method=0&timeserver=&timezone=34&utcdate=1970-01-01&utctime=00:00:00&date=2024-03-05&time=07:08:09&"
        "dstenable=no&dstauto=yes&offset=1:00&starttime=3.5.0/02:00:00&stoptime=10.5.0/03:00:30",
    .writes = "set tzone",
    .readsBack = false};
constexpr char kNtp[] = "set ntp";

constexpr char kShownTime[] = "&date=2024-03-05&time=07:08:09";

TEST(Datetime, SetsTheClockByHandAloneAndStoresTheZoneAndItsRules) {
  kDatetime.accepts(
      "method=2&date=2024-02-29&time=13:05:00 method=2&date=1969-01-01&time=00:00:00 "
      "method=2&date=2037-12-31&time=23:59:59",
      "", "set curtime");
  kDatetime.accepts("method=1&timeserver=ntp-1.example_x", "", kNtp);
  kDatetime.accepts("method=0&timeserver=", "ntp.method=1 ntp.timeserver=a.b", kNtp);
  kDatetime.accepts(
      "timezone=34&dstenable=no&dstauto=yes&offset=1:00 timezone=87&dstenable=yes&dstauto=no&offset=1:30 "
      "stoptime=12.1.6/23:59:59");
  kDatetime.accepts({{"", "time=4102444799", "utcdate=2099-12-31&utctime=23:59:59"},
                     {"method=2&date=2037-1-2&time=3:4:5", "ntp.method=1",
                      "method=2&date=2037-01-02&time=03:04:05", "set curtime set ntp"},
                     {"date=2024-02-29&time=13:05:00", "", "", "", "date, time"},
                     {"offset=-0:30", "", "offset=0:30"},
                     {"", "tzone.offset=-02:00", "offset=02:00"},
                     {"stoptime=1.1.0/0:0", "", "stoptime=1.1.0/0:0:00"},
                     {"starttime=03.2.0/02:00", "", "starttime=3.2.0/02:00:00"}});
  EXPECT_EQ(scripted().stored("tzone.starttime"), "M3.2.0/02:00");
}

TEST(Datetime, SetsTheClockToTheTimeThatWasShownOnlyInAnotherZoneAndWithMethod2) {
  kDatetime.accepts({{std::string{"method=2"} + kShownTime, "", "method=2", ""},
                     {std::string{"timezone=1"} + kShownTime, "", "timezone=1", "set tzone", "date, time"},
                     {std::string{"method=2&timezone=1"} + kShownTime, "", {}, "set tzone set curtime"}});
  for (const char* write : {"set tzone", "set curtime"}) {
    scripted().reset(kDatetime.state);
    scripted().results = {{write, kOvertaken}};
    EXPECT_EQ(request(kDatetime.cgi, std::string{"method=2&timezone=1"} + kShownTime).status, 200);
    EXPECT_NE(scripted().writes().find(" set curtime"), std::string::npos) << scripted().writes();
    EXPECT_EQ(scripted().stored("tzone.timezone"), "1");
  }
  EXPECT_EQ(scripted().writes(), "set tzone set curtime set curtime#2");
}

TEST(Datetime, FailsOnStoredRulesThatCannotBeSplit) {
  for (const char* state : {"tzone.starttime=M3.5.0", "tzone.stoptime=M3.5.0/02", "tzone.offset=1"})
    kDatetime.refuses("!", state, 500);
  kDatetime.refuses("method=9", "tzone.starttime=M3.5.0", 500);
  kDatetime.refuses("method=9", "tzone.offset=1");
  scripted().reset(kDatetime.state + " tzone.starttime=none");
  scripted().results = {{"set tzone", 1}};
  EXPECT_TRUE(isFailure(request(kDatetime.cgi, "starttime=3.2.0/02:00"), 400));
}

}  // namespace
}  // namespace camera::test
