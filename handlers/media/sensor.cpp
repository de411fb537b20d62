// sensor.cgi: the image settings that the sensor has.
#include "platform/product/sensor.h"

#include <algorithm>
#include <vector>

#include "handlers/endpoint.h"
#include "handlers/media/sensor_tables.h"
#include "platform/store/records/image.h"

namespace camera {

constexpr std::size_t kMostTimes = 256;  // as many as a byte can number

class SensorEndpoint final : public Endpoint {
 public:
  // The parameters depend on the sensor. Those that it lacks are ignored, as unknown ones are.
  SensorEndpoint() : Endpoint({}) {}

 private:
  int load() override {
    const ProductInfo* known = product();
    if (known == nullptr) return 500;
    if (!sensor_.init(*known)) return fail(500, "product information: too long a list of capabilities");
    if (read(image_) != 200) return 500;
    readExposureTimes();
    return 200;
  }

  void readExposureTimes() {
    exposureTimes_.clear();
    const std::string times = exposureTimes();
    for (std::string_view rest = times; !rest.empty() && exposureTimes_.size() < kMostTimes;)
      exposureTimes_.emplace_back(takeUntil(' ', &rest));
    exposureNames_.clear();
    for (const std::string& entry : exposureTimes_) exposureNames_.push_back(exposureTime(entry).data());
    exposures_ = Names{exposureNames_};
  }

  int apply() override {
    ImageSettings wanted = image_;
    for (const Capability& capability : capabilities()) {
      const auto query = queries().find(capability.parameter);
      if (query == queries().end() || !sensor_.has(capability)) continue;
      const ValueSet& values = valuesOf(capability);
      const int number = numberOf(values, query->second, image_.*capability.field);
      if (number < 0) return refuse(capability.parameter, acceptedBy(values));
      wanted.*capability.field = static_cast<std::uint8_t>(number);
    }
    noteIgnored();
    writeChanged(image_, wanted);
    const int result = commit();
    if (result == 200) image_ = wanted;
    return result;
  }

  void noteIgnored() {
    for (const auto& [name, value] : queries()) {
      if (!takes(name)) Endpoint::noteIgnored(name);
    }
  }

  bool takes(std::string_view name) const {
    const auto all = capabilities();
    return std::any_of(all.begin(), all.end(),
                       [&](const Capability& c) { return name == c.parameter && sensor_.has(c); });
  }

  int reply() override {
    for (const Capability& capability : capabilities()) {
      const std::uint8_t stored = image_.*capability.field;
      const bool isListed = capability.values != nullptr || stored < exposureNames_.size();
      if (sensor_.has(capability) && isListed) replyValue(capability, stored);
    }
    return 200;
  }

  void replyValue(const Capability& capability, int stored) {
    const ValueSet& values = valuesOf(capability);
    const std::string value = valueOf(values, stored);
    isJson() && areNumbers(values) ? number(capability.parameter, value) : pair(capability.parameter, value);
  }

  Words wordsOf(std::string_view name) const override {
    for (const Capability& capability : capabilities()) {
      const bool isMeant =
          name == capability.parameter && capability.values != nullptr && sensor_.has(capability);
      const Names* names = isMeant ? namesOf(sensor_.values(capability)) : nullptr;
      if (names != nullptr) return names->accepted;
    }
    return {};
  }

  const ValueSet& valuesOf(const Capability& capability) const {
    return capability.values != nullptr ? sensor_.values(capability) : exposures_;
  }

  SensorCapabilities sensor_;
  std::vector<std::string> exposureTimes_;
  std::vector<const char*> exposureNames_;
  ValueSet exposures_;
  ImageSettings image_;
};

template struct EndpointOf<SensorEndpoint>;

}  // namespace camera
