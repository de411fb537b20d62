// The site survey and the signal: which lines of the driver's files are networks.
#include "platform/site_survey.h"

#include <gtest/gtest.h>

namespace camera {
namespace {

// The list as one text, "ssid|encryption|auth|type|channel|rssi" per network; frees it.
std::string shown(sitelist* list) {
  std::string text;
  for (const sitelist* site = list; site != nullptr; site = site->next) {
    text += std::string{site->ssid} + "|" + site->encryption + "|" + site->auth + "|" + site->network_type +
            "|" + std::to_string(site->channel) + "|" + std::to_string(site->rssi) + "\n";
  }
  ClearQueue(list);
  return text;
}

TEST(SiteSurvey, LeavesOutWhatIsNoNetwork) {
  const std::string longSsid(55, 's');
  const std::string rest = "\tNONE\tOPEN\tInfra\t1\t-50";
  struct Row {
    std::string text;
    std::string list;
  };
  const Row rows[] = {
      {"", ""},
      {"\n\n", ""},
      {"A b\tAES\tWPA2-PSK\tInfra\t6\t-42\n\tWEP\tOPEN\tAdhoc\t1\t-90",
       "A b|AES|WPA2-PSK|Infra|6|-42\n|WEP|OPEN|Adhoc|1|-90\n"},
      {"bad\nA" + rest + "\nbad\t\t\t\t\n", "A|NONE|OPEN|Infra|1|-50\n"},
      {longSsid + rest, longSsid + "|NONE|OPEN|Infra|1|-50\n"},
      {"s" + longSsid + rest, ""},
      {"A\t123456789012\tOPEN\tInfra\t1\t-50", ""},
      {"A\tNONE\t12345678901234567890\tInfra\t1\t-50", ""},
      {"A\tNONE\tOPEN\t123456789012\t1\t-50", ""},
      {"A" + rest + "\t", ""},
      {"A" + rest + "x", ""},
      {"A\tNONE\tOPEN\tInfra\t\t-50", ""},
      {"A\tNONE\tOPEN\tInfra\t2147483648\t-50", ""},
      {std::string{"A\0", 2} + rest, ""},
  };
  for (const Row& row : rows) EXPECT_EQ(shown(parseSites(row.text, nullptr)), row.list) << row.text;
  EXPECT_EQ(shown(parseSites("B" + rest + "\nC" + rest, parseSites("A" + rest, nullptr))),
            "A|NONE|OPEN|Infra|1|-50\nB|NONE|OPEN|Infra|1|-50\nC|NONE|OPEN|Infra|1|-50\n");
}

TEST(SiteSurvey, TakesASignalThatIsOneInteger) {
  struct Row {
    const char* text;
    int rssi;
  };
  const Row rows[] = {{"-42\n", -42},   {"7", 7},          {"", 0},           {"\n", 0},
                      {"-42 dBm\n", 0}, {"-42\n-43\n", 0}, {"-2147483649", 0}};
  for (const Row& row : rows) EXPECT_EQ(parseRssi(row.text), row.rssi) << row.text;
}

}  // namespace
}  // namespace camera
