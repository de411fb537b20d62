// The wireless networks that the camera can hear.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

struct sitelist {
  char ssid[56];          // empty: no usable entry
  char encryption[12];    // "NONE", "WEP", "AES", "TKIP" or another word
  char auth[20];          // "OPEN", "SHARED", "WPA-PSK", "WPA2-PSK", "WPA" or another word
  char network_type[12];  // "Infra": an access point; anything else: ad-hoc
  std::int32_t channel;
  std::int32_t rssi;  // dBm
  sitelist* next;
};
static_assert(offsetof(sitelist, encryption) == 56 && offsetof(sitelist, auth) == 68);
static_assert(offsetof(sitelist, network_type) == 88 && offsetof(sitelist, channel) == 100);
static_assert(offsetof(sitelist, rssi) == 104);

// Appends the networks of the last survey to the list, which may be null, and returns its head: null when
// nothing was heard. A line of the survey that is none is left out. The caller frees the list with
// ClearQueue.
sitelist* dumpSites(sitelist* list);
void ClearQueue(sitelist* list);

namespace camera {

// What dumpSites does with the text of the survey.
sitelist* parseSites(std::string_view text, sitelist* list);

// The signal that the driver left as a text; 0 when it is no number.
int parseRssi(std::string_view text);

}  // namespace camera
