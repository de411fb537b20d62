// wlansignal.cgi: the signal of the wireless network that the camera is connected to.
#include "framework/cgilet.h"
#include "platform/cam.h"

class WlanSignalCgilet final : public InfCgilet {
 public:
  void onLoad() override { status = 200; }

  void onApply() override { status = 400; }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    pair("signal", cam_get_wireless_rssi());
    infOK();
  }
};

template InfCgilet* camera::create<WlanSignalCgilet>();
