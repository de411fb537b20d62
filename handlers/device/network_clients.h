// What network.cgi shares with pppoe.cgi and ddns.cgi.
#pragma once

#include <initializer_list>

#include "handlers/endpoint.h"

namespace camera {

inline constexpr const char* kDdnsProviders[] = {"velkorddns", "dyndns"};

// Base of the endpoints that switch a network client on or off. The client needs some texts to run.
template <class Base>
class ClientEndpoint : public Base {
 protected:
  using typename Base::Param;

  struct NeededText {
    Param param;
    const char* value;  // with the request's change
  };

  // Returns 400 if the client is on, a needed text is empty, and the request gives that text or the client's
  // switch; otherwise 200. An incomplete stored client does not block other changes.
  int canRun(Param client, bool isOn, std::initializer_list<NeededText> needed) {
    for (const auto& [param, value] : needed) {
      if (isOn && (this->given(client) || this->given(param)) && *value == '\0')
        return this->refuse(param.name(), joined({"needed while ", client.name(), " is on"}));
    }
    return 200;
  }
};

}  // namespace camera
