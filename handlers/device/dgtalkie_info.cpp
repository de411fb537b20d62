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

template <>
const Api kApi<DgtalkieInfoEndpoint> = {
    .subsystem = Subsystem::kDevice,
    .summary = "States that the camera supports dgtalkie, and which of its codes; the same on every camera.",
    .reply = {
        {"dgtalkie", ApiType::kText, "The camera supports dgtalkie.", Words{kNoYes}.last(1)},
        {"supports", ApiType::kTexts, "The supported codes, hexadecimal; in text, separated by commas."}}};
template struct EndpointOf<DgtalkieInfoEndpoint>;

}  // namespace camera
