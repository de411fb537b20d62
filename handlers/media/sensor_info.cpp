// sensor_info.cgi: which settings the image sensor has and which values each takes.
#include <utility>

#include "handlers/endpoint.h"
#include "handlers/media/sensor_tables.h"
#include "platform/product/sensor.h"
#include "platform/store/records/image.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr std::size_t kMostListed = 63;  // characters of the exposure times

// Lists the times that fit, without -1, which is accepted but not offered. False if the text or a part of it
// is too long.
bool listExposureTimes(std::string_view text, std::string* list) {
  if (text.size() > kLongestList) return false;
  while (!text.empty()) {
    const std::string_view entry = takeUntil(' ', &text);
    const std::string_view time = exposureTime(entry);
    if (time.size() > kLongestName || entry.size() - time.size() > kLongestName + 1) return false;
    if (time == "-1") continue;
    const std::string piece = std::string{time} + (text.empty() ? "" : ",");
    if (list->size() + piece.size() > kMostListed) return true;
    list->append(piece);
  }
  return true;
}

}  // namespace

class SensorInfoEndpoint final : public ReadOnlyEndpoint {
  int reply() override {
    const ProductInfo* known = product();
    if (known == nullptr) return 500;
    const DisplayMode* display = displayMode(displaySystemInUse());
    if (display == nullptr) return fail(500, "display system: cannot be read");
    if (!sensor_.init(*known)) return fail(500, "product information: too long a list of capabilities");
    for (const Capability& capability : capabilities()) {
      if (capability.currentKey != nullptr) pair("inputsize", display->resolutions[0]);
      if (!sensor_.has(capability)) continue;
      const int result = replyValues(capability);
      if (result != 200) return result;
    }
    return 200;
  }

  int replyValues(const Capability& capability) {
    if (capability.values == nullptr) return replyExposureTimes(capability);
    if (capability.currentKey != nullptr) return replyCurrent(capability);
    const ValueSet& values = sensor_.values(capability);
    std::string offered = &values == values_ ? offered_ : offeredBy(values);  // neighbours often share them
    // Two capabilities that offer the same for one parameter stand one after the other and have one line.
    if (capability.parameter == parameter_ && offered == offered_) return 200;
    replyList(capability.parameter, offered, values);
    parameter_ = capability.parameter;
    values_ = &values;
    offered_ = std::move(offered);
    return 200;
  }

  void replyList(std::string_view key, std::string_view offered, const ValueSet& values) {
    const auto* range = std::get_if<Range>(&values);
    if (!isJson() || range == nullptr)
      return list(key, offered, areNumbers(values) ? ListOf::kNumbers : ListOf::kTexts);
    JsonObject bounds;
    bounds.add("min", range->min);
    bounds.add("max", range->max);
    value(key, bounds.text());
  }

  int replyExposureTimes(const Capability& capability) {
    std::string times;
    if (!listExposureTimes(exposureTimes(), &times))
      return fail(500, "product information: too long a list of exposure times");
    list(capability.parameter, times, ListOf::kNumbers);
    return 200;
  }

  int replyCurrent(const Capability& capability) {
    ImageSettings image;
    if (read(image) != 200) return 500;
    pair(capability.currentKey, valueOf(sensor_.values(capability), image.*capability.field));
    return 200;
  }

  SensorCapabilities sensor_;
  std::string_view parameter_;  // of the last list
  const ValueSet* values_ = nullptr;
  std::string offered_;
};

constexpr char kRange[] = "The values; in JSON a list of numbers, or `min` and `max` of a range.";
constexpr char kWords[] = "The values.";
template <>
const Api kApi<SensorInfoEndpoint> = {
    .subsystem = Subsystem::kPicture,
    .summary = "Which settings sensor.cgi has on this camera, and which values to offer for each.",
    .records = "none; reads `image`, `profile`",
    .reply = {{.name = "brightness", .type = ApiType::kAny, .meaning = kRange, .isOptional = true},
              {.name = "contrast", .type = ApiType::kAny, .meaning = kRange, .isOptional = true},
              {.name = "saturation", .type = ApiType::kAny, .meaning = kRange, .isOptional = true},
              {.name = "hue", .type = ApiType::kAny, .meaning = kRange, .isOptional = true},
              {.name = "whitebalance", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {.name = "flicker", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {.name = "autoexposure", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {.name = "maxexposuretime", .type = ApiType::kAny, .meaning = kWords, .isOptional = true},
              {.name = "backlightcomp",
               .type = ApiType::kAny,
               .meaning =
                   "The values; in JSON a list, or `min` and `max` of a range. With both kinds of back-light "
                   "compensation, a list of the two.",
               .isOptional = true},
              {.name = "noisereduction", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {.name = "mirror", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {.name = "flip", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {.name = "autogainctrl", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {.name = "color", .type = ApiType::kTexts, .meaning = kWords, .isOptional = true},
              {"inputsize", ApiType::kText, "The largest picture of the current display system."},
              {.name = "videooutformat",
               .type = ApiType::kText,
               .meaning = "The current `videoinformat` of sensor.cgi.",
               .words = kVideoInFormats,
               .isOptional = true},
              {.name = "sharpness", .type = ApiType::kNumbers, .meaning = kWords, .isOptional = true}}};
template struct EndpointOf<SensorInfoEndpoint>;

}  // namespace camera
