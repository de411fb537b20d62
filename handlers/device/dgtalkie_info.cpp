// dgtalkie_info.cgi: reports that the camera supports dgtalkie, and the supported codes.
#include "handlers/endpoint.h"

namespace camera {

class DgtalkieInfoEndpoint final : public ReadOnlyEndpoint {
  int reply() override {
    pair("dgtalkie", "yes");
    list("supports", "0x01,0x02,0x03,0x04,0x05,0x06");
    return 200;
  }
};

template struct EndpointOf<DgtalkieInfoEndpoint>;

}  // namespace camera
