// wlansignal.cgi: the signal of the wireless network that the camera is connected to.
#include "handlers/endpoint.h"

namespace camera {

class WlanSignalCgilet final : public ReadOnlyEndpoint {
  int reply() override {
    pair("signal", cam_get_wireless_rssi());
    return 200;
  }
};

template InfCgilet* create<WlanSignalCgilet>();

}  // namespace camera
