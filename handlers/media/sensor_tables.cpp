// The sensor models, their capabilities and values, and the display systems.
#include "handlers/media/sensor_tables.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "platform/product/display_system.h"
#include "platform/store/records/image.h"
#include "platform/text.h"

namespace camera {
namespace {

// Names.
constexpr const char* kWhiteBalances[] = {"auto", "disabled", "fixed_indoor", "fixed_outdoor", "fixed_fluor"};
constexpr const char* kSimpleWhiteBalances[] = {"disabled", "auto"};
constexpr const char* kFlickers[] = {"auto", "50", "60"};
constexpr const char* kOnLevels[] = {"no", "yes", "yes", "yes"};
constexpr const char* kNoiseLevels[] = {"off", "low", "low", "high", "high", "high"};
constexpr const char* kTwoNoiseLevels[] = {"off", "high"};
constexpr const char* kFourNoiseLevels[] = {"off", "low", "high", "high"};
constexpr const char* kEightNoiseLevels[] = {"off", "low", "low", "low", "high", "high", "high", "high"};

// A list of levels, which are also accepted by number.
constexpr ValueSet levels(Words names) {
  return {.names = names, .numbers = {0, static_cast<int>(names.size()) - 1}};
}

// Value sets.
constexpr ValueSet kPercent{.numbers = {0, 100}};
constexpr ValueSet kStep5{.numbers = {0, 100}, .step = 5};
constexpr ValueSet kStep10{.numbers = {0, 100}, .step = 10};
constexpr ValueSet kStep20{.numbers = {0, 100}, .step = 20};
constexpr ValueSet kStep25{.numbers = {0, 100}, .step = 25};
constexpr ValueSet kByte{.numbers = {0, 255}};
constexpr ValueSet kSwitch{.names = kOffOn};
constexpr ValueSet kTruth{.names = kNoYes};
constexpr ValueSet kFalsehood{.names = kNoYes, .isReversed = true};
constexpr ValueSet kVideoFormat{.names = kVideoInFormats};
constexpr ValueSet kWhiteBalance{.names = kWhiteBalances};
constexpr ValueSet kWhiteBalanceOffersTwo{.names = kWhiteBalances, .offered = {0, 1}};
constexpr ValueSet kWhiteBalanceByHand{.names = kWhiteBalances, .accepted = {1, 3}, .offered = {1, 3}};
constexpr ValueSet kSimpleWhiteBalance{.names = kSimpleWhiteBalances};
constexpr ValueSet kFlicker{.names = kFlickers};
constexpr ValueSet kFlickerByHand{.names = kFlickers, .accepted = {1, 2}, .offered = {1, 2}};
constexpr ValueSet kOn{.names = kOnLevels};
constexpr ValueSet kBacklightLevels = levels(kOnLevels);
constexpr ValueSet kGainLevels{.names = kOnLevels, .accepted = {1, 2}, .numbers = {1, 2}};
constexpr ValueSet kNoise = levels(kNoiseLevels);
constexpr ValueSet kTwoNoise = levels(kTwoNoiseLevels);
constexpr ValueSet kFourNoise = levels(kFourNoiseLevels);
constexpr ValueSet kEightNoise = levels(kEightNoiseLevels);

}  // namespace

// Left out, a capability has what it has on a model that nobody knows.
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
    {.name = "BW",
     .parameter = "color",
     .field = &ImageSettings::black_white,
     .values = &ImageSensor::blackWhite,
     .sharesLine = true},
    {.name = "Source",
     .parameter = "videoinformat",
     .field = &ImageSettings::video_in_format,
     .values = &ImageSensor::videoInFormat,
     .currentKey = "videooutformat"},
    {"Sharpness", "sharpness", &ImageSettings::sharpness, &ImageSensor::sharpness},
};
static_assert(std::size(kCapabilities) <= 32, "SensorCapabilities holds a bit for each");

// Sets of codecs, by what a profile may have.
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
     .isFast = true,
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
     .isFast = true,
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
     .isFast = true,
     .bans = "1|MJPEG|-|-|-|-:2|MJPEG|-|-|-|-:4|MJPEG|-|-|-|-:2|-|1280x720|-|-|-:4|-|1280x720|-|-|-:"
             "3|-|1280x720|6,30|-|-"},
    {.name = "ip2986"},
    {.name = "hm1375", .smaller = profileBit(2) | profileBit(3) | profileBit(4), .isFast = true},
};

// Frame rates per second. Of the offered ones some lack a 6 that is accepted.
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

// The row of the model, or else that of its base model; null for one without.
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

// Those names within the bounds that differ.
std::vector<const char*> distinct(Words names, Bounds part) {
  std::vector<const char*> found;
  const int last = std::min(part.max, static_cast<int>(names.size()) - 1);
  for (int i = part.min; i <= last; ++i) {
    const char* name = names[static_cast<std::size_t>(i)];
    const bool isKnown = indexOf(name, found) >= 0;
    if (!isKnown) found.push_back(name);
  }
  return found;
}

}  // namespace

std::string listed(Words words) {
  std::string text;
  for (const char* word : words) text += joined({text.empty() ? "" : ",", word});
  return text;
}

int ValueSet::position(int number) const {
  return isReversed ? static_cast<int>(names.size()) - 1 - number : number;
}

int ValueSet::numberOf(std::string_view value, int stored) const {
  const bool isStored = static_cast<std::size_t>(stored) < names.size() &&
                        value == names[static_cast<std::size_t>(position(stored))];
  const int found = indexOf(value, names);
  if (found >= accepted.min && found <= accepted.max) return isStored ? stored : position(found);
  int number = 0;
  if (!parseInteger(value, numbers.min, numbers.max, &number) || value.front() == '-') return -1;
  const bool isListed = step == 1 || (number % step == 0 && value == Decimal(number).text());
  return isListed ? number : -1;
}

std::string ValueSet::nameOf(int stored) const {
  if (names.empty()) return joined({Decimal(stored).text()});
  const int last = static_cast<int>(names.size()) - 1;
  return names[static_cast<std::size_t>(position(std::min(stored, last)))];
}

std::string ValueSet::listOffered() const {
  if (!names.empty()) return listed(distinct(names, offered));
  const Decimal first(numbers.min);
  if (step == 1) return joined({first.text(), "...", Decimal(numbers.max).text()});
  std::string text = joined({first.text()});
  for (int number = numbers.min + step; number <= numbers.max; number += step)
    text += joined({",", Decimal(number).text()});
  return text;
}

std::string ValueSet::listAccepted() const {
  const std::string words = anyOf(distinct(names, accepted));
  if (numbers.max < numbers.min) return words.empty() ? "nothing on this camera" : words;
  const Decimal steps(step);
  return joined({words, words.empty() ? "" : ", or ", Decimal(numbers.min).text(), " to ",
                 Decimal(numbers.max).text(), step == 1 ? "" : " in steps of ",
                 step == 1 ? "" : steps.text()});
}

std::span<const Capability> capabilities() {
  return kCapabilities;
}

bool SensorCapabilities::init(const ProductInfo& product) {
  const ImageSensor* known = findModel<ImageSensor>(kImageSensors, product.sensor);
  sensor_ = known != nullptr ? known : &kUnknownSensor;
  const std::string text = product.sensor_caps.spaced();
  if (text.size() > kLongestList) return false;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view name = takeUntil(' ', &rest);
    if (name.size() > kLongestName) return false;
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

}  // namespace camera
