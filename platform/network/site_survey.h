// The wireless networks that the camera can hear.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace camera {

struct Site {
  char ssid[56];          // empty: endpoints leave the network out
  char encryption[12];    // "NONE", "WEP", "AES", "TKIP" or another word
  char auth[20];          // "OPEN", "SHARED", "WPA-PSK", "WPA2-PSK", "WPA" or another word
  char network_type[12];  // "Infra": an access point; anything else: ad-hoc
  std::int32_t channel;
  std::int32_t rssi;  // dBm
};

// The networks of the last survey; empty if nothing was heard.
std::vector<Site> surveySites();

// The signal of the wireless connection, in the driver's unit; 0 without a connection.
int wirelessRssi();

// The networks in the text of a survey. Malformed lines are ignored.
std::vector<Site> parseSites(std::string_view text);

// The signal that the driver wrote; 0 if the text is not a number.
int parseRssi(std::string_view text);

}  // namespace camera
