// The PPPoE and dynamic DNS clients, as network.cgi and the endpoints of their own take their parameters.
#pragma once

#include <initializer_list>

#include "handlers/endpoint.h"

namespace camera {

inline constexpr const char* kDdnsProviders[] = {"velkorddns", "dyndns"};

// A text without which a client cannot run.
struct NeededText {
  const char* param;
  const char* value;  // after the request
  bool isGiven;
};

// 200 if the client can run; 400 if a needed text is empty and the request switches the client on, or empties
// the text while the client stays on. An incomplete stored client does not block other changes.
inline int canRun(Endpoint& endpoint, const char* client, bool isOn, bool isClientGiven,
                  std::initializer_list<NeededText> needed) {
  for (const NeededText& text : needed) {
    if (isOn && (isClientGiven || text.isGiven) && *text.value == '\0')
      return endpoint.refuse(text.param, joined({"needed while ", client, " is on"}));
  }
  return 200;
}

}  // namespace camera
