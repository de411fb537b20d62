// The sensor models, their capabilities and values, and the display systems.
#include "handlers/media/sensor_tables.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "platform/product/sensor.h"
#include "platform/store/records/image.h"
#include "platform/store/records/profile.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr const char* kWhiteBalances[] = {"auto", "disabled", "fixed_indoor", "fixed_outdoor", "fixed_fluor"};
constexpr const char* kSimpleWhiteBalances[] = {"disabled", "auto"};
constexpr const char* kFlickers[] = {"auto", "50", "60"};
constexpr const char* kYesNo[] = {"yes", "no"};
constexpr const char* kOnLevels[] = {"no", "yes", "yes", "yes"};
constexpr const char* kNoises[] = {"off", "low", "high"};
constexpr const char* kTwoNoiseLevels[] = {"off", "high"};
constexpr const char* kFourNoiseLevels[] = {"off", "low", "high", "high"};
constexpr const char* kSixNoiseLevels[] = {"off", "low", "low", "high", "high", "high"};
constexpr const char* kEightNoiseLevels[] = {"off", "low", "low", "low", "high", "high", "high", "high"};

constexpr ValueSet kPercent = Range{0, 100};
constexpr ValueSet kByte = Range{0, 255};
constexpr ValueSet kStep5 = Steps{5};
constexpr ValueSet kStep10 = Steps{10};
constexpr ValueSet kStep20 = Steps{20};
constexpr ValueSet kStep25 = Steps{25};
constexpr ValueSet kSwitch = Names{kOffOn};
constexpr ValueSet kTruth = Names{kNoYes};
constexpr ValueSet kFalsehood = Names{kYesNo, kNoYes};
constexpr ValueSet kVideoFormat = Names{kVideoInFormats};
constexpr ValueSet kWhiteBalance = Names{kWhiteBalances};
constexpr ValueSet kWhiteBalanceOffersTwo =
    Names{kWhiteBalances, kWhiteBalances, Words{kWhiteBalances}.first(2)};
constexpr ValueSet kWhiteBalanceByHand = Names{kWhiteBalances, Words{kWhiteBalances}.subspan(1, 3)};
constexpr ValueSet kSimpleWhiteBalance = Names{kSimpleWhiteBalances};
constexpr ValueSet kFlicker = Names{kFlickers};
constexpr ValueSet kFlickerByHand = Names{kFlickers, Words{kFlickers}.subspan(1)};
constexpr ValueSet kOn = Levels{{kOnLevels, kNoYes}};
constexpr ValueSet kBacklightLevels = Levels{{kOnLevels, kNoYes}, {0, 3}};
constexpr ValueSet kGainLevels = Levels{{kOnLevels, Words{kNoYes}.subspan(1), kNoYes}, {1, 2}};
constexpr ValueSet kTwoNoise = Levels{{kTwoNoiseLevels}, {0, 1}};
constexpr ValueSet kFourNoise = Levels{{kFourNoiseLevels, kNoises}, {0, 3}};
constexpr ValueSet kNoise = Levels{{kSixNoiseLevels, kNoises}, {0, 5}};
constexpr ValueSet kEightNoise = Levels{{kEightNoiseLevels, kNoises}, {0, 7}};

}  // namespace

// A capability that a row leaves out has the values of an unknown model.
struct ImageSensor {
  const char* name;
  const ValueSet* brightness = &kPercent;
  const ValueSet* contrast = &kPercent;
  const ValueSet* saturation = &kPercent;
  const ValueSet* hue = &kPercent;
  const ValueSet* whiteBalance = &kWhiteBalance;
  const ValueSet* flicker = &kFlicker;
  const ValueSet* autoExposure = &kTruth;
  const ValueSet* backlightLevel = &kByte;
  const ValueSet* backlight = &kOn;
  const ValueSet* noiseReduction = &kNoise;
  const ValueSet* mirror = &kSwitch;
  const ValueSet* flip = &kSwitch;
  const ValueSet* autoGain = &kOn;
  const ValueSet* color = &kTruth;
  const ValueSet* blackWhite = &kFalsehood;
  const ValueSet* videoInFormat = &kVideoFormat;
  const ValueSet* sharpness = &kStep20;
};

namespace {

constexpr ImageSensor kUnknownSensor{.name = ""};
constexpr ImageSensor kImageSensors[] = {
    {.name = "ov7725",
     .brightness = &kStep5,
     .contrast = &kStep25,
     .saturation = &kStep25,
     .flicker = &kFlickerByHand},
    {.name = "ov7740",
     .brightness = &kStep5,
     .contrast = &kStep5,
     .saturation = &kStep10,
     .whiteBalance = &kSimpleWhiteBalance},
    {.name = "ov9710",
     .brightness = &kStep5,
     .contrast = &kStep5,
     .saturation = &kStep5,
     .hue = &kStep5,
     .whiteBalance = &kSimpleWhiteBalance,
     .noiseReduction = &kTwoNoise,
     .sharpness = &kStep5},
    {.name = "mt9m112", .contrast = &kStep20, .saturation = &kStep20},
    {.name = "mt9m131",
     .contrast = &kStep20,
     .saturation = &kStep20,
     .whiteBalance = &kWhiteBalanceOffersTwo,
     .flicker = &kFlickerByHand},
    {.name = "mt9v111"},
    {.name = "mt9v136",
     .brightness = &kStep10,
     .contrast = &kStep25,
     .saturation = &kStep20,
     .flicker = &kFlickerByHand},
    {.name = "vicam",
     .contrast = &kStep5,
     .saturation = &kStep5,
     .whiteBalance = &kWhiteBalanceOffersTwo,
     .flicker = &kFlickerByHand,
     .backlightLevel = &kStep10,
     .sharpness = &kStep5},
    {.name = "vx1128"},
    {.name = "ip2986",
     .brightness = &kStep5,
     .contrast = &kStep5,
     .saturation = &kStep5,
     .hue = &kStep5,
     .flicker = &kFlickerByHand,
     .noiseReduction = &kEightNoise,
     .sharpness = &kStep10},
    {.name = "mdin220",
     .brightness = &kStep5,
     .contrast = &kStep5,
     .saturation = &kStep5,
     .whiteBalance = &kWhiteBalanceByHand,
     .backlight = &kBacklightLevels,
     .noiseReduction = &kFourNoise,
     .autoGain = &kGainLevels,
     .sharpness = &kStep5},
    {.name = "hm1375",
     .brightness = &kStep5,
     .contrast = &kStep5,
     .saturation = &kStep5,
     .hue = &kStep5,
     .whiteBalance = &kSimpleWhiteBalance,
     .flicker = &kFlickerByHand,
     .sharpness = &kStep10},
};

constexpr Capability kCapabilities[] = {
    {"Brightness", "brightness", &ImageSettings::brightness, &ImageSensor::brightness},
    {"Contrast", "contrast", &ImageSettings::contrast, &ImageSensor::contrast},
    {"Saturation", "saturation", &ImageSettings::saturation, &ImageSensor::saturation},
    {"Hue", "hue", &ImageSettings::hue, &ImageSensor::hue},
    {"WhiteBalance", "whitebalance", &ImageSettings::white_balance, &ImageSensor::whiteBalance},
    {"Frequency", "flicker", &ImageSettings::flicker, &ImageSensor::flicker},
    {"AutoExposure", "autoexposure", &ImageSettings::auto_exposure, &ImageSensor::autoExposure},
    {"NightShot", "maxexposuretime", &ImageSettings::max_exposure_time, nullptr},
    {"BLCompensation", "backlightcomp", &ImageSettings::backlight_level, &ImageSensor::backlightLevel},
    {"BLControl", "backlightcomp", &ImageSettings::backlight, &ImageSensor::backlight},
    {"NoiseReduction", "noisereduction", &ImageSettings::noise_reduction, &ImageSensor::noiseReduction},
    {"Mirror", "mirror", &ImageSettings::mirror, &ImageSensor::mirror},
    {"Flip", "flip", &ImageSettings::flip, &ImageSensor::flip},
    {"AutoGain", "autogainctrl", &ImageSettings::auto_gain, &ImageSensor::autoGain},
    {"Color", "color", &ImageSettings::color, &ImageSensor::color},
    {"BW", "color", &ImageSettings::black_white, &ImageSensor::blackWhite},
    {"Source", "videoinformat", &ImageSettings::video_in_format, &ImageSensor::videoInFormat,
     "videooutformat"},
    {"Sharpness", "sharpness", &ImageSettings::sharpness, &ImageSensor::sharpness},
};
static_assert(std::size(kCapabilities) <= 32, "SensorCapabilities holds a bit for each");

constexpr Codecs kOnlyMjpeg = 1U << kMjpeg;
constexpr Codecs kOnlyMpeg4 = 1U << kMpeg4;
constexpr Codecs kNoMjpeg = 1U << kMpeg4 | 1U << kH264;
constexpr Codecs kAllCodecs = kOnlyMjpeg | kNoMjpeg;

constexpr VideoSensor kVideoSensors[] = {
    {.name = "ov7740", .codecs = {kAllCodecs, kNoMjpeg, kOnlyMjpeg, kNoMjpeg}, .hasQualityModes = true},
    {.name = "ov9710",
     .codecs = {kNoMjpeg, kNoMjpeg, kOnlyMjpeg, kNoMjpeg},
     .hasQualityModes = true,
     .resolutions = 4,
     .largest = profileBit(1) | profileBit(3),
     .sharesLargest = true,
     .inLargest = {.profile = 3, .rate = 5},
     .hasFastRates = true,
     .manyBitRates = 0b11110},
    {.name = "mt9v136", .codecs = {kNoMjpeg, kAllCodecs, kOnlyMjpeg, kOnlyMpeg4}, .missingRates = 3},
    {.name = "mdin220", .codecs = {kNoMjpeg, kAllCodecs, kOnlyMjpeg, kOnlyMpeg4}},
    {.name = "ip2986",
     .codecs = {kAllCodecs, kAllCodecs, kOnlyMjpeg, kOnlyMpeg4},
     .manyBitRates = profileBit(1)},
    {.name = "hm1375",
     .codecs = {kAllCodecs, kNoMjpeg, kOnlyMjpeg, kNoMjpeg},
     .hasQualityModes = true,
     .resolutions = 4,
     .largest = profileBit(1) | profileBit(2) | profileBit(4),
     .hasFastRates = true,
     .manyBitRates = 0b11110},
};

constexpr StreamSensor kStreamSensors[] = {
    {.name = "ov7740", .bans = "2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-"},
    {.name = "ov9710",
     .smaller = profileBit(2) | profileBit(4),
     .bans = "1|MJPEG|-|-|-|-:2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-:2|-|1280x800|-|-|-:4|-|1280x800|-|-|-:"
             "3|-|1280x800|6,30|-|-"},
    {.name = "ov9710_720p",
     .smaller = profileBit(2) | profileBit(4),
     .offersFastRates = true,
     .bans = "1|MJPEG|-|-|-|-:2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-:2|-|1280x720|-|-|-:4|-|1280x720|-|-|-:"
             "3|-|1280x720|6,30|-|-"},
    {.name = "ip2986"},
    {.name = "hm1375", .smaller = profileBit(2) | profileBit(3) | profileBit(4), .offersFastRates = true},
};

// Frames per second. Some lists of offered rates leave out 6, which is accepted.
constexpr const char* k60Hz[] = {"1", "2", "3", "5", "6", "10", "15", "30"};
constexpr const char* k50Hz[] = {"1", "2", "3", "5", "8", "12", "25"};
constexpr const char* kOfferedTo15[] = {"1", "2", "3", "5", "10", "15"};
constexpr FrameRates kFull60Hz{k60Hz, k60Hz};
constexpr FrameRates kFull50Hz{k50Hz, k50Hz};
constexpr FrameRates kTo10{Words{k60Hz}.first(6), Words{k60Hz}.first(6)};
constexpr FrameRates kOffersTo10{Words{kOfferedTo15}.first(5), Words{kOfferedTo15}.first(5)};
constexpr FrameRates kTo15{Words{k60Hz}.first(7), k60Hz};
constexpr FrameRates kOffersTo15{kOfferedTo15, k60Hz};

constexpr RateChange kTo60Hz[] = {{25, 30}, {12, 15}, {8, 10}};
constexpr RateChange kTo50Hz[] = {{30, 25}, {15, 12}, {10, 8}};

constexpr DisplayMode kDisplayModes[] = {
    {.resolutions = {"640x480", "320x240", "160x112", "80x60"},
     .accepted = kFull60Hz,
     .offered = kFull60Hz,
     .rateChanges = kTo60Hz,
     .subtype = 2},
    {.resolutions = {"1280x1024", "640x512", "320x256", "160x128"},
     .accepted = kTo10,
     .offered = kOffersTo10,
     .largest = Largest::kFirstProfile,
     .largestIsMjpeg = true,
     .detectsMotion = false,
     .fastest = 10},
    {.resolutions = {"704x480", "352x240", "176x112", "88x60"},
     .accepted = kFull60Hz,
     .offered = kFull60Hz,
     .rateChanges = kTo60Hz,
     .videoFormat = 1},
    {.resolutions = {"704x576", "352x288", "176x144", "88x72"},
     .accepted = kFull50Hz,
     .offered = kFull50Hz,
     .rateChanges = kTo50Hz,
     .videoFormat = 2},
    {.resolutions = {"704x576", "352x288", "176x144", "88x72"}, .accepted = kFull50Hz, .offered = kFull60Hz},
    {.resolutions = {"1024x768", "512x384", "256x192", "128x96"},
     .accepted = kTo10,
     .offered = kOffersTo10,
     .largest = Largest::kFirstProfile,
     .fastest = 10},
    {.resolutions = {"640x480", "320x240", "160x112", "80x60"},
     .accepted = kFull50Hz,
     .offered = kFull50Hz,
     .rateChanges = kTo50Hz,
     .subtype = 3},
    {.resolutions = {"1280x720", "640x352", "320x176", "160x80"},
     .accepted = kTo15,
     .offered = kOffersTo15,
     .largest = Largest::kFirstProfileUnlessShared,
     .fastest = 15},
    {.resolutions = {"1280x960", "640x480", "320x240", "160x112"},
     .accepted = kTo15,
     .offered = kOffersTo15,
     .largest = Largest::kFirstProfile,
     .fastest = 15},
    {.resolutions = {"1920x1080", "960x540", "480x270", "240x128"},
     .accepted = kFull60Hz,
     .offered = kFull60Hz},
    {.resolutions = {"1280x800", "640x400", "320x192", "160x96"},
     .accepted = kFull60Hz,
     .offered = kFull60Hz},
};
static_assert(std::size(kDisplayModes) == std::size(kDisplaySystems));

// Returns the row of the model, or else that of its base model; null if neither has one.
template <class Row>
const Row* findModel(std::span<const Row> rows, std::string_view model) {
  for (const Row& row : rows)
    if (model == row.name) return &row;
  for (const Row& row : rows) {
    const std::string_view base = row.name;
    if (model.starts_with(base) && model.substr(base.size()).starts_with('_')) return &row;
  }
  return nullptr;
}

constexpr std::size_t kUsualList = 63;  // characters of a list; few are longer

constexpr int kLargestStep = 100;  // of the numbers that are listed in steps

int numberIn(const Range& range, std::string_view value, int /*stored*/) {
  int number = 0;
  return parseInteger(value, range.min, range.max, &number) ? number : -1;
}

int numberIn(const Steps& steps, std::string_view value, int stored) {
  const int number = numberIn(Range{0, kLargestStep}, value, stored);
  return number % steps.step == 0 && value == Decimal(number).text() ? number : -1;
}

int numberIn(const Names& names, std::string_view value, int /*stored*/) {
  return indexOf(value, names.accepted) < 0 ? -1 : indexOf(value, names.all);
}

int numberIn(const Levels& levels, std::string_view value, int stored) {
  const int first = numberIn(levels.names, value, stored);
  // The number of a level has no sign: "-0" is rejected.
  if (first < 0) return consistsOf(value, kDigits) ? numberIn(levels.numbers, value, stored) : -1;
  const auto level = static_cast<std::size_t>(stored);
  const bool hasName = level < levels.names.all.size() && value == levels.names.all[level];
  return hasName ? stored : first;
}

std::string rangeSchema(const Range& range) {
  return joined({R"("type":"integer","minimum":)", Decimal(range.min).text(),
                 ",\"maximum\":", Decimal(range.max).text()});
}

}  // namespace

const Names* namesOf(const ValueSet& values) {
  const auto* levels = std::get_if<Levels>(&values);
  return levels != nullptr ? &levels->names : std::get_if<Names>(&values);
}

std::string listed(Words words) {
  std::string text;
  text.reserve(kUsualList);
  for (const char* word : words) {
    if (!text.empty()) text += ',';
    text += word;
  }
  return text;
}

int numberOf(const ValueSet& values, std::string_view value, int stored) {
  return std::visit([&](const auto& set) { return numberIn(set, value, stored); }, values);
}

std::string valueOf(const ValueSet& values, int stored) {
  const Names* names = namesOf(values);
  if (names == nullptr) return std::string{Decimal(stored).text()};
  return names->all[std::min(static_cast<std::size_t>(stored), names->all.size() - 1)];
}

std::string offeredBy(const ValueSet& values) {
  if (const Names* names = namesOf(values)) return listed(names->offered);
  if (const auto* range = std::get_if<Range>(&values))
    return joined({Decimal(range->min).text(), "...", Decimal(range->max).text()});
  const int step = std::get<Steps>(values).step;
  std::string text;
  text.reserve(kUsualList);
  text = "0";
  for (int number = step; number <= kLargestStep; number += step) (text += ',') += Decimal(number).text();
  return text;
}

bool areNumbers(const ValueSet& values) {
  const auto* names = std::get_if<Names>(&values);
  return names != nullptr ? areNumbers(names->all) : !std::holds_alternative<Levels>(values);
}

std::string acceptedBy(const ValueSet& values) {
  if (const auto* steps = std::get_if<Steps>(&values))
    return joined({"0 to 100 in steps of ", Decimal(steps->step).text()});
  const Names* names = namesOf(values);
  const std::string words = names == nullptr ? "" : anyOf(names->accepted);
  const auto* levels = std::get_if<Levels>(&values);
  const auto* range = levels != nullptr ? &levels->numbers : std::get_if<Range>(&values);
  if (range == nullptr || range->max < range->min) return words.empty() ? "nothing on this camera" : words;
  return joined(
      {words, words.empty() ? "" : ", or ", Decimal(range->min).text(), " to ", Decimal(range->max).text()});
}

std::string schemaOf(const ValueSet& values) {
  if (const auto* range = std::get_if<Range>(&values)) return rangeSchema(*range);
  if (const auto* steps = std::get_if<Steps>(&values))
    return joined({rangeSchema({0, kLargestStep}), ",\"multipleOf\":", Decimal(steps->step).text()});
  const ListOf kind = areNumbers(values) ? ListOf::kNumbers : ListOf::kTexts;
  std::string words = choiceSchema(listed(namesOf(values)->accepted), kind);
  const auto* levels = std::get_if<Levels>(&values);
  if (levels == nullptr || levels->numbers.max < levels->numbers.min) return words;
  return joined({"\"anyOf\":[{", words, "},{", rangeSchema(levels->numbers), "}]"});
}

int nearestTo(int number, const ValueSet& values) {
  const auto* steps = std::get_if<Steps>(&values);
  return steps == nullptr ? number : (number + steps->step / 2) / steps->step * steps->step;
}

std::span<const Capability> capabilities() {
  return kCapabilities;
}

bool SensorCapabilities::init(const ProductInfo& product) {
  const ImageSensor* known = findModel<ImageSensor>(kImageSensors, product.sensor);
  sensor_ = known != nullptr ? known : &kUnknownSensor;
  WordList names = product.sensor_caps;
  std::size_t length = 0;  // of the list with single separators
  for (std::string_view name = names.next(); !name.empty(); name = names.next()) {
    length += name.size() + (length > 0 ? 1 : 0);
    if (name.size() > kLongestName || length > kLongestList) return false;
    for (std::size_t i = 0; i < std::size(kCapabilities); ++i)
      if (name == kCapabilities[i].name) has_ |= std::uint32_t{1} << i;
  }
  return true;
}

bool SensorCapabilities::has(const Capability& capability) const {
  return (has_ >> (&capability - kCapabilities) & 1) != 0;
}

const ValueSet& SensorCapabilities::values(const Capability& capability) const {
  return *(sensor_->*capability.values);
}

std::string_view exposureTime(std::string_view entry) {
  const std::size_t slash = entry.find('/');
  return slash == entry.npos ? entry : entry.substr(slash + 1);
}

const VideoSensor* videoSensor(std::string_view model) {
  return findModel<VideoSensor>(kVideoSensors, model);
}

const StreamSensor* streamSensor(std::string_view model) {
  return findModel<StreamSensor>(kStreamSensors, model);
}

bool DisplayMode::mayHaveLargest(int profile, const VideoSensor& sensor) const {
  const bool isFirsts = largest == Largest::kFirstProfile ||
                        (largest == Largest::kFirstProfileUnlessShared && !sensor.sharesLargest);
  return (sensor.largest & profileBit(profile)) != 0 && (profile == 1 || !isFirsts);
}

const DisplayMode* displayMode(int number) {
  const auto index = static_cast<std::size_t>(number);
  return index < std::size(kDisplayModes) ? &kDisplayModes[index] : nullptr;
}

std::string displaySystemsOf(const ProductInfo& product) {
  std::string names = product.display_systems.spaced(kMostDisplaySystems);
  std::replace(names.begin(), names.end(), ' ', ',');
  return names.empty() ? kDisplaySystems[ProfileSettings{}.display_system] : names;
}

std::string choiceSchema(std::string_view words, ListOf kind) {
  return joined({"\"type\":", kind == ListOf::kNumbers ? "\"integer\"" : "\"string\"",
                 ",\"enum\":", jsonList(words, kind)});
}

void addNew(std::string_view word, std::string* list) {
  if (word.empty() || isOneOf(word, *list)) return;
  *list += joined({list->empty() ? "" : ",", word});
}

bool isOneOf(std::string_view word, std::string_view list) {
  while (!list.empty())
    if (takeUntil(',', &list) == word) return !word.empty();
  return false;
}

}  // namespace camera
