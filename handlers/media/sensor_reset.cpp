// sensor_reset.cgi: sets the image settings back to those of the factory.
#include "handlers/confirmation.h"
#include "handlers/endpoint.h"
#include "handlers/media/sensor_tables.h"
#include "platform/store/records/image.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("reset"));

}  // namespace

class SensorResetEndpoint final : public StateEndpoint<kParams, Takes::kCommand> {
  // A reset that fails still returns 200; the reply reports the failure.
  int carryOut(Confirmation& /*wanted*/) override {
    ImageSettings factory{};
    isDone_ = fitToSensor(&factory) && resetImage(factory) == StoreResult::kDone;
    return 200;
  }

  // The record's defaults are the same for every sensor, and some sensors accept a number in coarse steps
  // only. The nearest step is stored, so that sensor.cgi accepts what it shows.
  bool fitToSensor(ImageSettings* image) {
    SensorCapabilities sensor;
    const ProductInfo* known = product();
    if (known == nullptr || !sensor.init(*known)) return false;
    for (const Capability& capability : capabilities()) {
      if (capability.values == nullptr) continue;
      std::uint8_t& field = image->*capability.field;
      field = static_cast<std::uint8_t>(nearestTo(field, sensor.values(capability)));
    }
    return true;
  }

  int reply() override {
    pair("reset", isDone_ ? "yes" : "fail");
    return 200;
  }

  bool isDone_ = false;
};

constexpr const char* kResults[] = {"yes", "fail"};
template <>
const Api kApi<SensorResetEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPicture,
     .summary = "Resets the settings of sensor.cgi to the factory settings.",
     .records = "`image`",
     .params = {{"reset", "Confirms the request."}},
     .reply = {{"reset", ApiType::kText,
                "`fail` if the settings cannot be stored or the product information cannot be read.",
                kResults}}});
template struct EndpointOf<SensorResetEndpoint>;

}  // namespace camera
