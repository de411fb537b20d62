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

  bool knows(std::string_view name) const override { return takes(name); }

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

namespace {

std::string exposureSchema(const ProductInfo& product) {
  std::string names;
  bool areAllNumbers = true;
  const std::string times = product.max_exposure_times.spaced(kMostTimes);
  for (std::string_view rest = times; !rest.empty();) {
    const std::string_view name = exposureTime(takeUntil(' ', &rest));
    areAllNumbers = areAllNumbers && isJsonInteger(name);
    addNew(name, &names);
  }
  if (names.empty()) return {};
  const ListOf kind = areAllNumbers ? ListOf::kNumbers : ListOf::kTexts;
  const std::string first = names.substr(0, names.find(','));
  return joined({choiceSchema(names, kind), ",\"x-factory\":", areAllNumbers ? first : jsonString(first)});
}

// The default of a new camera is the accepted value that is nearest to the record's.
std::string defaultOf(const Capability& capability, const ValueSet& values) {
  static constexpr ImageSettings kFactory{};
  const std::string value = valueOf(values, nearestTo(kFactory.*capability.field, values));
  return joined({",\"x-factory\":", areNumbers(values) ? value : jsonString(value)});
}

std::string sensorSchema(std::string_view param, const ProductInfo& product) {
  SensorCapabilities sensor;
  if (!sensor.init(product)) return "-";
  std::string schema;
  std::string factory;
  for (const Capability& capability : capabilities()) {
    if (param != capability.parameter || !sensor.has(capability)) continue;
    const bool isListed = capability.values != nullptr;
    const std::string own = isListed ? schemaOf(sensor.values(capability)) : exposureSchema(product);
    if (!schema.empty() && own != schema) return joined({"\"allOf\":[{", schema, "},{", own, "}]"});
    schema = own;
    if (isListed) factory = defaultOf(capability, sensor.values(capability));
  }
  return schema.empty() ? "-" : schema + factory;
}

constexpr char kInSteps[] = "`0` to `100`, on most sensors in steps";

}  // namespace

template <>
const Api kApi<SensorEndpoint> = {
    .subsystem = Subsystem::kPicture,
    .summary = "The settings of the image sensor.",
    .records = "`image`",
    .params =
        {{"brightness", "The brightness.", nullptr, nullptr, kInSteps},
         {"contrast", "The contrast.", nullptr, nullptr, kInSteps},
         {"saturation", "The saturation of the colors.", nullptr, nullptr, kInSteps},
         {"hue", "The hue.", nullptr, nullptr, kInSteps},
         {"whitebalance", "The white balance.", nullptr, nullptr,
          "`auto`, `disabled`, `fixed_indoor`, `fixed_outdoor`, `fixed_fluor`; not all on every sensor"},
         {"flicker", "The mains frequency, whose flicker the sensor suppresses.", "Hz", nullptr,
          "`50`, `60`, on some sensors `auto`"},
         {"autoexposure", "Whether the exposure is automatic.", nullptr, nullptr, "`no`, `yes`"},
         {"maxexposuretime",
          "The longest exposure; if several times are written alike, the first of them is stored.", nullptr,
          nullptr, "one of the product's exposure times, written `30` if its name is `1/30`"},
         {"backlightcomp", "The back-light compensation; a sensor with both kinds of it shows two values.",
          nullptr, nullptr,
          "`no`, `yes`, on mdin220 also the level, `0` to `3`; or a number, `0` to `255`, on vicam `0` to "
          "`100` in "
          "steps of 10"},
         {"noisereduction", "The noise reduction, as a word or a level.", nullptr, nullptr,
          "`off`, `low`, `high` (no `low` on ov9710), or the level: `0` and `1` on ov9710, to `3` on "
          "mdin220, to "
          "`7` on ip2986, to `5` on others"},
         {"mirror", "Swaps left and right.", nullptr, nullptr, "`off`, `on`"},
         {"flip", "Swaps top and bottom.", nullptr, nullptr, "`off`, `on`"},
         {"autogainctrl", "The automatic gain control.", nullptr, nullptr,
          "`no`, `yes`; on mdin220 `yes` or the level, `1` or `2`"},
         {"color", "Whether the picture is in color; some sensors show it twice.", nullptr, nullptr,
          "`no`, `yes`"},
         {"videoinformat", "The video format of the sensor.", nullptr, nullptr,
          "`auto`, `ntsc`, `pal`, `pal-m`, `pal-n`"},
         {"sharpness", "The sharpness.", nullptr, nullptr, "`0` to `100` in steps of 5, 10 or 20"}},
    .reply = {{.name = "brightness", .isOptional = true},
              {.name = "contrast", .isOptional = true},
              {.name = "saturation", .isOptional = true},
              {.name = "hue", .isOptional = true},
              {.name = "whitebalance", .isOptional = true},
              {.name = "flicker", .isOptional = true},
              {.name = "autoexposure", .isOptional = true},
              {.name = "maxexposuretime", .isOptional = true},
              {.name = "backlightcomp", .type = ApiType::kAny, .isOptional = true},
              {.name = "noisereduction", .isOptional = true},
              {.name = "mirror", .isOptional = true},
              {.name = "flip", .isOptional = true},
              {.name = "autogainctrl", .isOptional = true},
              {.name = "color", .type = ApiType::kAny, .isOptional = true},
              {.name = "videoinformat", .isOptional = true},
              {.name = "sharpness", .isOptional = true}},
    .schema = sensorSchema};
template struct EndpointOf<SensorEndpoint>;

}  // namespace camera
