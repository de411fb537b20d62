// What image sensors and display systems can do, as data for all endpoints of picture and video.
// sensor_info.cgi and stream_info.cgi offer what sensor.cgi and video.cgi accept, except where a row or the
// endpoint's own file says otherwise.
//
// A new sensor model needs a row in kImageSensors if its values differ from those of an unknown model; one in
// kVideoSensors if it has video profiles; and one in kStreamSensors for stream_info.cgi. A variant
// ("ov9710_720p") needs a row only where it differs from its base model.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "framework/json.h"
#include "framework/params.h"
#include "framework/value_tables.h"
#include "platform/product/product_info.h"

namespace camera {

struct ImageSettings;

// The words, separated by commas: "off,low,high".
std::string listed(Words words);

// What a capability accepts is one of these. They differ in what is stored for a value: a number, or the
// position of a word.

// Every number from min to max; none if min is the larger.
struct Range {
  int min;
  int max;
};

// The texts "0", "5", ... "100". Another spelling of the same number is not accepted.
struct Steps {
  int step;
};

// Words. What is stored is the position among all of them; of equal words the first counts.
struct Names {
  Words all;
  Words accepted = all;
  Words offered = accepted;
};

// Levels, several of which may have the same name. A stored level that already has the given name is kept.
struct Levels {
  Names names;
  Range numbers{0, -1};  // accepted besides the names
};

using ValueSet = std::variant<Range, Steps, Names, Levels>;

// The names of a set; null if it has none.
const Names* namesOf(const ValueSet& values);

// The number to store for a value, -1 if the value is not accepted.
int numberOf(const ValueSet& values, std::string_view value, int stored);
// Returns the value of a stored number. A number beyond the names has the last name.
std::string valueOf(const ValueSet& values, int stored);
std::string offeredBy(const ValueSet& values);   // "off,low,high", "0...100", "0,50,100"
bool areNumbers(const ValueSet& values);         // all values are integers
std::string acceptedBy(const ValueSet& values);  // in words, for a refusal
std::string schemaOf(const ValueSet& values);    // in members of a JSON schema, without braces
// Of Steps, the accepted value nearest to the number; of two equally near ones, the larger. Of any other set,
// the number itself.
int nearestTo(int number, const ValueSet& values);

// A model's row: a pointer to a ValueSet for each capability.
struct ImageSensor;

// A capability, as the product information names it. It has a parameter of sensor.cgi, a reply line with the
// same key, and a field of the record image.
struct Capability {
  std::string_view name;
  std::string_view parameter;
  std::uint8_t ImageSettings::*field;
  const ValueSet* ImageSensor::*values;  // null: the product's exposure times
  const char* currentKey = nullptr;  // sensor_info.cgi shows the stored value under this key, not the values
};
std::span<const Capability> capabilities();

// Most characters of the product's lists, and of the names in them.
inline constexpr std::size_t kLongestList = 255;
inline constexpr std::size_t kLongestName = 31;

// The capabilities of this camera's sensor, and their values.
class SensorCapabilities {
 public:
  // False for a list of capabilities that is too long or has too long a name.
  bool init(const ProductInfo& product);

  bool has(const Capability& capability) const;
  // Of a capability whose values are not null.
  const ValueSet& values(const Capability& capability) const;

 private:
  const ImageSensor* sensor_ = nullptr;
  std::uint32_t has_ = 0;  // a bit for each of capabilities()
};

// The time in an entry of the product's exposure times: what follows the first slash, or all of it.
std::string_view exposureTime(std::string_view entry);

inline constexpr int kProfiles = 4;  // they are numbered from 1
inline constexpr int kResolutions = 4;

// Sets of profiles and of codecs.
using Profiles = std::uint8_t;  // a bit for each number
using Codecs = std::uint8_t;    // a bit for each stored number
constexpr Profiles profileBit(int profile) {
  return static_cast<Profiles>(1U << static_cast<unsigned>(profile));
}

// Of a codec and of a quality mode, the position in the list is stored.
enum Codec : std::uint8_t { kMjpeg, kMpeg4, kH264 };
inline constexpr const char* kCodecs[] = {"MJPEG", "MPEG4", "H264"};
enum QualityMode : std::uint8_t { kConstantBitRate, kFixedQuality };
inline constexpr const char* kQualityModes[] = {"CBR", "Fixquality"};
inline constexpr const char* kBitRates[] = {"64",   "128",  "256",  "384",  "512", "768",
                                            "1024", "1536", "2048", "3072", "4096"};
inline constexpr std::size_t kCommonBitRates = 9;  // which every sensor has
inline constexpr const char* kVideoInFormats[] = {"auto", "ntsc", "pal", "pal-m", "pal-n"};

// Frames per second, at most, of one profile.
struct RateLimit {
  std::uint8_t profile = 0;
  std::uint8_t rate = 255;
};

// What the video profiles of a sensor can be.
struct VideoSensor {
  const char* name;
  Codecs codecs[kProfiles];       // of the first profile, the second, ...
  bool hasQualityModes = false;   // the client chooses between CBR and Fixquality
  std::uint8_t resolutions = 3;   // how many of a display system's, from the first on
  Profiles largest = 0b11110;     // which may have the largest resolution
  bool sharesLargest = false;     // lifts the limit kFirstProfileUnlessShared
  RateLimit inLargest{};          // with the largest resolution
  bool hasFastRates = false;      // accepts the frame rates of fast sensors
  std::uint8_t missingRates = 0;  // how many of the lowest rates the first profile lacks
  Profiles manyBitRates = 0;      // the profiles that have more than the common ones
};
// Null for a model without video profiles.
const VideoSensor* videoSensor(std::string_view model);

// What stream_info.cgi says of a sensor beyond its VideoSensor.
struct StreamSensor {
  const char* name;
  Profiles smaller = 0;          // the profiles that are not offered the largest resolution
  bool offersFastRates = false;  // offers the frame rates of fast sensors
  const char* bans = "";
};
// Null for a model that it does not know.
const StreamSensor* streamSensor(std::string_view model);

struct FrameRates {
  Words usual;
  Words onFastSensors;
  Words of(bool isFast) const { return isFast ? onFastSensors : usual; }
};

struct RateChange {
  std::uint8_t from;
  std::uint8_t to;
};

// Which profiles may have a display system's largest resolution, if the sensor lets them.
enum class Largest : std::uint8_t { kAll, kFirstProfile, kFirstProfileUnlessShared };

// A display system, by its number.
struct DisplayMode {
  const char* resolutions[kResolutions];  // the largest first
  FrameRates accepted;
  FrameRates offered;
  std::span<const RateChange> rateChanges{};  // of a switch to it
  Largest largest = Largest::kAll;
  bool largestIsMjpeg = false;  // the first profile has the largest resolution as MJPEG only
  bool detectsMotion = true;
  // Other effects of a switch to it.
  std::uint8_t fastest = 255;    // frames per second, at most
  std::uint8_t subtype = 0;      // 0: as it was
  std::uint8_t videoFormat = 0;  // a position in kVideoInFormats; 0: as it was

  bool mayHaveLargest(int profile, const VideoSensor& sensor) const;
};
// Null for an unknown number.
const DisplayMode* displayMode(int number);

// For descriptions of the interface. The lists have commas between their items.

// The display systems of the product. If it lists none, that of a new camera.
std::string displaySystemsOf(const ProductInfo& product);
// The members of a JSON schema for a choice among the words.
std::string choiceSchema(std::string_view words, ListOf kind);
// Appends the word, unless it is empty or the list has it.
void addNew(std::string_view word, std::string* list);
bool isOneOf(std::string_view word, std::string_view list);

}  // namespace camera
