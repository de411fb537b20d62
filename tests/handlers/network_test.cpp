// wireless.cgi: the channels of each region, and which mode, authentication, encryption and key fit together.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kWireless{
    "wireless.cgi",
    "product.region=0 wireless.enable=1 wireless.mode=0 wireless.auth=0 wireless.encryption=0 "
    "wireless.essid=Net wireless.channel=1 wireless.key=",
    "enable=on&mode=managed&essid=Net&chpatterns=11111111111&channel=1&auth=open&encryption=none",
    "set wireless"};

// Stored states, with auth and encryption as numbers.
const std::string kMixed = "wireless.auth=6 wireless.encryption=1 wireless.key=w-e-p";
const std::string kWpa = "wireless.auth=2 wireless.encryption=3 wireless.key=passphrase";
const std::string kAdHocWpa = "wireless.mode=1 " + kWpa;

TEST(Wireless, AppliesAChannelOfTheRegionInAdHocModeAlone) {
  kWireless.accepts({{"channel=6", "", "", {}, "channel"},
                     {"channel=6&mode=managed", "wireless.mode=1", "mode=managed", {}, "channel"},
                     {"channel=6&mode=ad-hoc"},
                     {"channel=6", "wireless.mode=1"},
                     {"activekey=1&chpatterns=&format=%00&keylength=1&key2=%ff&key3=x&key4=y",
                      "",
                      "",
                      {},
                      "chpatterns, format, keylength, key2, key3, key4"}});
  kWireless.refuses("channel=-6", "wireless.mode=1");
  int region = 0;
  for (const std::string pattern : {"11111111111", "1111111111111", "00000000011", "0000000001111",
                                    "00000000000001", "11111111111111", "001111111", "0000111111111", ""}) {
    const std::string state = "product.region=" + std::to_string(region++);
    kWireless.accepts({{"", state, "chpatterns=" + pattern}});
    for (std::size_t channel = 0; channel <= 16; ++channel) {
      const bool isAllowed = channel >= 1 && channel <= pattern.size() && pattern[channel - 1] == '1';
      scripted().reset(kWireless.state + " " + state);
      EXPECT_EQ(request("wireless.cgi", "channel=" + std::to_string(channel)).status, isAllowed ? 200 : 400);
    }
  }
}

TEST(Wireless, StoresWhatFitsTogether) {
  const struct {
    std::string stored, query, left;  // left: mode, auth, encryption and key
  } rows[] = {
      {"", "mode=ad-hoc", "100"},
      {kMixed, "mode=ad-hoc", "161w-e-p"},
      {kWpa, "mode=managed", "023passphrase"},
      {kAdHocWpa, "mode=managed&auth=WPA2-PSK", "053passphrase"},
      {"wireless.auth=5 wireless.encryption=2 wireless.key=passphrase", "auth=WPA-PSK", "022passphrase"},
      {"wireless.encryption=2", "auth=WPA2-PSK&passphrase=12345678", "05212345678"},
      {kWpa, "auth=open&encryption=none", "000passphrase"},
      {kWpa, "auth=shared&encryption=WEP&key1=abcde", "061abcde"},
      {kMixed, "auth=open&encryption=none", "000w-e-p"},
      {"wireless.encryption=1", "auth=shared&key1=abcde", "061abcde"},
      {"wireless.auth=1", "auth=open", "000"},
      {kMixed, "encryption=none", "060w-e-p"},
      {kMixed, "auth=WPA-PSK&encryption=AES&passphrase=12345678", "02312345678"},
      {kWpa, "encryption=TKIP", "022passphrase"},
      {"wireless.auth=5 wireless.key=passphrase", "encryption=AES", "053passphrase"},
      {"wireless.auth=2 wireless.key=short", "encryption=AES&passphrase=12345678", "02312345678"},
      {"wireless.key=w-e-p", "encryption=WEP", "001w-e-p"},
      {"wireless.auth=1", "encryption=WEP&key1=abcde", "011abcde"},
      {kMixed, "key1=abcde", "061abcde"},
      {kMixed, "passphrase=", "061w-e-p"},
      {kMixed, "passphrase=12345678", "061w-e-p"},
      {kWpa, "key1=", "023passphrase"},
      {kWpa, "key1=abcde&passphrase=12345678", "02312345678"},
      {"wireless.key=w-e-p", "key1=", "000"},
      {"", "key1=abcde", "000abcde"},
      {"", "key1=abcde&passphrase=12345678", "00012345678"}};
  for (const auto& [stored, query, left] : rows) {
    scripted().reset(kWireless.state + " " + stored);
    const Reply reply = request("wireless.cgi", query);
    EXPECT_EQ(reply.status, 200) << stored << " " << query << reply.body;
    std::string now;
    for (const char* name : {"mode", "auth", "encryption", "key"})
      now += scripted().stored(std::string{"wireless."} + name);
    EXPECT_EQ(now, left) << stored << " " << query;
  }
}

}  // namespace
}  // namespace camera::test
