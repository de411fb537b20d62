// wlansurvey.cgi and wlansignal.cgi: which networks are listed, as what, and when nothing is.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

void expectSurvey(const std::string& state, const std::string& reply) {
  Endpoint{.cgi = "wlansurvey.cgi", .state = state, .reply = reply}.accepts({});
}

TEST(WlanSurvey, ListsTheNetworksThatTheCameraCanJoin) {
  const std::pair<const char*, const char*> rows[] = {
      {"A+b,NONE,OPEN,Infra,1,-50",
       "ssid=A b&signal=100&mode=infrastructure&channel=1&auth=open&encryption=none"},
      {"B,WEP,OPEN,Adhoc,14,-51", "ssid=B&signal=99&mode=Ad-hoc&channel=14&auth=open&encryption=WEP"},
      {"B,WEP,SHARED,infra,2,-80", "ssid=B&signal=24&mode=Ad-hoc&channel=2&auth=shared&encryption=WEP"},
      {"D,AES,WPA2-PSK,Infra,4,-81",
       "ssid=D&signal=23&mode=infrastructure&channel=4&auth=WPA2-PSK&encryption=AES"},
      {"E,TKIP,WPA-PSK,,5,-91", "ssid=E&signal=0&mode=Ad-hoc&channel=5&auth=WPA-PSK&encryption=TKIP"},
      {"F,NONE,WPA-PSK,Infra,7,-2147483648",
       "ssid=F&signal=0&mode=infrastructure&channel=7&auth=WPA-PSK&encryption=none"},
      {",NONE,OPEN,Infra,8,-60", ""},
      {"H,AES,WPA,Infra,8,-60", ""},
      {"H,WPA2,WPA2-PSK,Infra,8,-60", ""},
      {"H,NONE,SHARED,Infra,8,-60", ""}};
  std::string all;
  std::string whole;
  for (const auto& [site, listed] : rows) {
    expectSurvey(std::string{"site="} + site, listed);
    all += std::string{" site="} + site;
    whole += (whole.empty() || *listed == '\0' ? "" : "&") + std::string{listed};
  }
  expectSurvey(all, whole);
  expectSurvey("", "");
}

TEST(WlanSurvey, IsRefusedBeforeItListens) {
  const Endpoint survey{.cgi = "wlansurvey.cgi"};
  survey.refuses("ssid=A");
  survey.refuses("!", "product.wireless=0", 404);
  survey.refuses("a=1", "product.unreadable=1");
  EXPECT_EQ(scripted().history({"ask"}), "");
}

TEST(WlanSignal, IsTheDriversNumber) {
  const Endpoint signal{.cgi = "wlansignal.cgi", .state = "rssi=-42", .reply = "signal=-42"};
  signal.accepts({});
  signal.refuses("signal=1");
}

}  // namespace
}  // namespace camera::test
