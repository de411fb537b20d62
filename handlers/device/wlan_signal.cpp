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

template <>
const Api kApi<WlanSignalEndpoint> = {
    .subsystem = Subsystem::kNetwork,
    .summary = "The signal of the wireless network that the camera is connected to.",
    .reply = {{"signal", ApiType::kNumber,
               "In the unit of the wireless driver, usually dBm; 0 without a connection or a wireless "
               "interface. Unlike `signal` of wlansurvey.cgi it is not a percentage."}}};
template struct EndpointOf<WlanSignalEndpoint>;

}  // namespace camera
