// wlansignal.cgi: the signal of the camera's wireless connection.
#include "handlers/endpoint.h"
#include "platform/network/site_survey.h"

namespace camera {

class WlanSignalEndpoint final : public ReadOnlyEndpoint {
  int reply() override {
    pair("signal", wirelessRssi());
    return 200;
  }
};

template struct EndpointOf<WlanSignalEndpoint>;

}  // namespace camera
