// dgtalkie_info.cgi: that the camera knows dgtalkie, and the codes of it that it supports.
#include "framework/cgilet.h"

class DgtalkieInfoCgilet final : public InfCgilet {
 public:
  void onLoad() override { status = 200; }

  void onApply() override { status = 400; }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    pair("dgtalkie", "yes");
    pair("supports", "0x01,0x02,0x03,0x04,0x05,0x06");
    infOK();
  }
};

template InfCgilet* camera::create<DgtalkieInfoCgilet>();
