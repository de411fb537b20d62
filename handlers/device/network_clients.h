// The PPPoE and dynamic DNS clients, as network.cgi and the endpoints of their own take their parameters.
#pragma once

#include <algorithm>
#include <initializer_list>

#include "framework/param_table.h"

namespace camera {

inline constexpr const char* kDdnsProviders[] = {"velkorddns", "dyndns"};

inline ParamRow pppoeUserParam(const char* name) {
  return textParam(name, 0, 32, kPunctuationText);
}
inline ParamRow pppoePassParam(const char* name) {
  return textParam(name, 0, 60, kPunctuationText);
}
inline ParamRow ddnsHostParam(const char* name) {
  return textParam(name, 0, 36, kNameText);
}
inline ParamRow ddnsAccountParam(const char* name) {
  return textParam(name, 0, 30, kPunctuationText);
}

// A text without which a client cannot run: its parameter, and its value after the merge.
struct NeededText {
  const char* param;
  const char* value;
};

// To be asked after the merge. False when the request switches the client on while a needed text is empty, or
// empties one of a client that stays on. What was stored incomplete does not stand in the way of other
// changes.
inline bool canRun(const ParamTable& params, const char* client, int enable,
                   std::initializer_list<NeededText> needed) {
  if (enable == 0) return true;
  const bool switchedOn = params.given(client);
  return std::none_of(needed.begin(), needed.end(), [&](const NeededText& text) {
    return *text.value == '\0' && (switchedOn || params.givenEmpty(text.param));
  });
}

}  // namespace camera
