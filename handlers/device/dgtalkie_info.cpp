// dgtalkie_info.cgi: that the camera knows dgtalkie, and the codes of it that it supports.
#include "handlers/read_only_cgilet.h"

class DgtalkieInfoCgilet final : public camera::ReadOnlyCgilet {
  int answer() override {
    pair("dgtalkie", "yes");
    pair("supports", "0x01,0x02,0x03,0x04,0x05,0x06");
    return 200;
  }
};

template InfCgilet* camera::create<DgtalkieInfoCgilet>();
