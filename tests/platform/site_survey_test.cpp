// The site survey and the signal: which lines of the driver's files are networks.
#include "platform/network/site_survey.h"

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
  const std::string ssid(55, 's');
  const std::string rest = "\tNONE\tOPEN\tInfra\t1\t-50";
  for (const std::string& bad :
       {std::string{"\n\n"}, "s" + ssid + rest, std::string{"A\0", 2} + rest, "A" + rest + "\t",
        "A" + rest + "x", std::string{"A\t123456789012\tOPEN\tInfra\t1\t-50"},
        std::string{"A\tNONE\tOPEN\tInfra\t\t-50"}, std::string{"A\tNONE\tOPEN\t123456789012\t1\t-50"},
        std::string{"A\tNONE\tOPEN\tInfra\t2147483648\t-50"}}) {
    EXPECT_EQ(shown(parseSites(bad + "\n" + ssid + rest + "\n" + bad + "\n\tWEP\tOPEN\tAdhoc\t6\t-90",
                               parseSites("A b" + rest, nullptr))),
              "A b|NONE|OPEN|Infra|1|-50\n" + ssid + "|NONE|OPEN|Infra|1|-50\n|WEP|OPEN|Adhoc|6|-90\n")
        << bad;
  }
  EXPECT_EQ(shown(parseSites("", nullptr)), "");
}

TEST(SiteSurvey, TakesASignalThatIsOneInteger) {
  const std::pair<const char*, int> rows[] = {{"-42\n", -42},   {"7", 7},          {"", 0},
                                              {"-42 dBm\n", 0}, {"-42\n-43\n", 0}, {"-2147483649", 0}};
  for (const auto& [text, rssi] : rows) EXPECT_EQ(parseRssi(text), rssi) << text;
}

}  // namespace
}  // namespace camera
