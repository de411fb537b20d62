// wlansurvey.cgi and wlansignal.cgi: which networks are listed, as what, and when nothing is.
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

struct SiteRow {
  sitelist site;
  const char* reply;  // "" when it is not listed
};

std::string survey(std::vector<sitelist> sites) {
  scripted().reset();
  scripted().productInfo = "wireless = 1";
  scripted().sites = std::move(sites);
  const Reply reply = request("wlansurvey.cgi", "");
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(scripted().allCalls(), "get sites get freed");
  return reply.body;
}

TEST(WlanSurvey, ListsTheNetworksThatTheCameraCanJoin) {
  const SiteRow rows[] = {
      {{"A b", "NONE", "OPEN", "Infra", 1, -50, nullptr},
       "ssid=A b signal=100 mode=infrastructure channel=1 auth=open encryption=none "},
      {{"B", "WEP", "OPEN", "Adhoc", 14, -51, nullptr},
       "ssid=B signal=99 mode=Ad-hoc channel=14 auth=open encryption=WEP "},
      {{"B", "WEP", "SHARED", "infra", 2, -65, nullptr},
       "ssid=B signal=63 mode=Ad-hoc channel=2 auth=shared encryption=WEP "},
      {{"C", "TKIP", "WPA-PSK", "Infra", 3, -80, nullptr},
       "ssid=C signal=24 mode=infrastructure channel=3 auth=WPA-PSK encryption=TKIP "},
      {{"D", "AES", "WPA2-PSK", "Infra", 4, -81, nullptr},
       "ssid=D signal=23 mode=infrastructure channel=4 auth=WPA2-PSK encryption=AES "},
      {{"E", "NONE", "WPA-PSK", "Infra", 5, -90, nullptr},
       "ssid=E signal=0 mode=infrastructure channel=5 auth=WPA-PSK encryption=none "},
      {{"F\nsignal=1", "AES", "WPA2-PSK", "", 6, -91, nullptr},
       "ssid=F%0Asignal=1 signal=0 mode=Ad-hoc channel=6 auth=WPA2-PSK encryption=AES "},
      {{"G", "AES", "WPA2-PSK", "Infra", 7, INT32_MIN, nullptr},
       "ssid=G signal=0 mode=infrastructure channel=7 auth=WPA2-PSK encryption=AES "},
      {{"", "NONE", "OPEN", "Infra", 8, -60, nullptr}, ""},
      {{"H", "AES", "WPA", "Infra", 8, -60, nullptr}, ""},
      {{"H", "WPA2", "WPA2-PSK", "Infra", 8, -60, nullptr}, ""},
      {{"H", "NONE", "SHARED", "Infra", 8, -60, nullptr}, ""},
      {{"H", "AES", "OPEN", "Infra", 8, -60, nullptr}, ""},
      {{"H", "none", "OPEN", "Infra", 8, -60, nullptr}, ""},
      {{"B", "NONE", "OPEN", "Infra", 9, INT32_MAX, nullptr},
       "ssid=B signal=100 mode=infrastructure channel=9 auth=open encryption=none "},
  };
  std::vector<sitelist> all;
  std::string whole;
  for (const SiteRow& row : rows) {
    EXPECT_EQ(survey({row.site}), row.reply) << row.site.ssid << " " << row.site.auth;
    all.push_back(row.site);
    whole += row.reply;
  }
  EXPECT_EQ(survey(all), whole);
  EXPECT_EQ(survey({}), "");
}

TEST(WlanSurvey, IsRefusedBeforeItListens) {
  struct Row {
    const char* product;  // null: unreadable
    const char* query;
    int status;
  };
  const Row rows[] = {
      {"wireless = 1", "ssid=A", 400},
      {"wireless = 0", "", 404},
      {"wireless = 0", "a", 400},
      {"", "", 404},
      {nullptr, "", 500},
      {nullptr, "a=1", 400},
  };
  for (const Row& row : rows) {
    scripted().reset();
    scripted().productFails = row.product == nullptr;
    scripted().productInfo = row.product == nullptr ? "" : row.product;
    EXPECT_EQ(request("wlansurvey.cgi", row.query).status, row.status) << scripted().productInfo << row.query;
    EXPECT_EQ(scripted().allCalls(), "");
  }
}

TEST(WlanSignal, IsTheDriversNumber) {
  for (const int rssi : {0, -42, INT32_MIN}) {
    scripted().reset();
    scripted().productFails = true;  // it does not ask
    scripted().rssi = rssi;
    EXPECT_EQ(request("wlansignal.cgi", "").body, "signal=" + std::to_string(rssi) + " ");
    EXPECT_EQ(request("wlansignal.cgi", "signal=1").status, 400);
  }
}

}  // namespace
}  // namespace camera::test
