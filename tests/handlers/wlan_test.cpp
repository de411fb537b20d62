// wlansurvey.cgi and wlansignal.cgi: which networks are listed, as what, and when nothing is.
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

std::string survey(const std::vector<sitelist>& sites) {
  scripted().reset();
  scripted().productInfo = "wireless = 1";
  scripted().sites = sites;
  const std::string body = request("wlansurvey.cgi", "").body;
  EXPECT_EQ(scripted().allCalls(), "get sites get freed");
  return body;
}

TEST(WlanSurvey, ListsTheNetworksThatTheCameraCanJoin) {
  const std::pair<sitelist, const char*> rows[] = {
      {{"A b", "NONE", "OPEN", "Infra", 1, -50, nullptr},
       "ssid=A b signal=100 mode=infrastructure channel=1 auth=open encryption=none "},
      {{"B", "WEP", "OPEN", "Adhoc", 14, -51, nullptr},
       "ssid=B signal=99 mode=Ad-hoc channel=14 auth=open encryption=WEP "},
      {{"B", "WEP", "SHARED", "infra", 2, -80, nullptr},
       "ssid=B signal=24 mode=Ad-hoc channel=2 auth=shared encryption=WEP "},
      {{"D", "AES", "WPA2-PSK", "Infra", 4, -81, nullptr},
       "ssid=D signal=23 mode=infrastructure channel=4 auth=WPA2-PSK encryption=AES "},
      {{"E\nsignal=1", "TKIP", "WPA-PSK", "", 5, -91, nullptr},
       "ssid=E%0Asignal=1 signal=0 mode=Ad-hoc channel=5 auth=WPA-PSK encryption=TKIP "},
      {{"F", "NONE", "WPA-PSK", "Infra", 7, INT32_MIN, nullptr},
       "ssid=F signal=0 mode=infrastructure channel=7 auth=WPA-PSK encryption=none "},
      {{"", "NONE", "OPEN", "Infra", 8, -60, nullptr}, ""},
      {{"H", "AES", "WPA", "Infra", 8, -60, nullptr}, ""},
      {{"H", "WPA2", "WPA2-PSK", "Infra", 8, -60, nullptr}, ""},
      {{"H", "NONE", "SHARED", "Infra", 8, -60, nullptr}, ""},
  };
  std::vector<sitelist> all;
  std::string whole;
  for (const auto& [site, listed] : rows) {
    EXPECT_EQ(survey({site}), listed) << site.ssid << " " << site.auth;
    all.push_back(site);
    whole += listed;
  }
  EXPECT_EQ(survey(all), whole);
  EXPECT_EQ(survey({}), "");
}

TEST(WlanSurvey, IsRefusedBeforeItListens) {
  const std::tuple<const char*, bool, const char*, int> rows[] = {
      {"wireless = 1", false, "ssid=A", 400},
      {"wireless = 0", false, "", 404},
      {"", true, "", 500},
      {"", true, "a=1", 400},
  };
  for (const auto& [product, fails, query, status] : rows) {
    scripted().reset();
    scripted().productInfo = product;
    scripted().productFails = fails;
    EXPECT_EQ(request("wlansurvey.cgi", query).status, status) << product << query;
    EXPECT_EQ(scripted().allCalls(), "");
  }
}

TEST(WlanSignal, IsTheDriversNumber) {
  scripted().reset();
  scripted().productFails = true;  // it does not ask
  scripted().rssi = -42;
  EXPECT_EQ(request("wlansignal.cgi", "").body, "signal=-42 ");
  EXPECT_EQ(request("wlansignal.cgi", "signal=1").status, 400);
}

}  // namespace
}  // namespace camera::test
