// wlansignal.cgi: the signal of the wireless network that the camera is connected to.
#include "handlers/read_only_cgilet.h"
#include "platform/store/cam.h"

class WlanSignalCgilet final : public camera::ReadOnlyCgilet {
  int answer() override {
    pair("signal", cam_get_wireless_rssi());
    return 200;
  }
};

template InfCgilet* camera::create<WlanSignalCgilet>();
