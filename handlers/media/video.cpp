// video.cgi: one of the four video profiles: codec, resolution, frame rate, and a quality or a bit rate.
#include "handlers/endpoint.h"
#include "handlers/media/sensor_tables.h"
#include "platform/product/display_system.h"
#include "platform/store/records/profile.h"

namespace camera {
namespace {

// The profiles, the number of the one that the request names, and what they can be on this camera.
struct Video {
  ProfileSettings profiles;
  std::int32_t id = 0;
  std::int32_t quality = 0;  // in percent
  const VideoSensor* sensor = nullptr;
  const DisplayMode* display = nullptr;
  bool hasH264 = false;
};

// By the set of codecs that a profile can have; empty in place of those that it cannot.
constexpr auto kCodecChoices = [] {
  std::array<std::array<const char*, std::size(kCodecs)>, 1U << std::size(kCodecs)> choices{};
  for (std::size_t set = 0; set < choices.size(); ++set)
    for (std::size_t codec = 0; codec < std::size(kCodecs); ++codec)
      choices[set][codec] = (set >> codec & 1) != 0 ? kCodecs[codec] : "";
  return choices;
}();

Words codecs(const Video& video) {
  const Codecs known = video.hasH264 ? 0b111 : 0b011;
  return kCodecChoices[video.sensor->codecs[video.id - 1] & known];
}

Words resolutions(const Video& video) {
  return Words{video.display->resolutions}.first(video.sensor->resolutions);
}

Words frameRates(const Video& video) {
  const Words rates = video.display->accepted.of(video.sensor->hasFastRates);
  return video.id == 1 ? rates.subspan(video.sensor->missingRates) : rates;
}

Words bitRates(const Video& video) {
  const bool hasMany = (video.sensor->manyBitRates & profileBit(video.id)) != 0;
  return hasMany ? Words{kBitRates} : Words{kBitRates}.first(kCommonBitRates);
}

bool hasQualityModes(const Video& video) {
  return video.sensor->hasQualityModes;
}

template <auto kArray>
constexpr auto profileChoice(const char* name, Words words = {}) {
  return choiceParam<&Video::profiles, kArray, &Video::id>(name, words);
}

constexpr char kByCamera[] = "one that the sensor and the display system have";

constexpr auto kParams = paramRows<Video>(
    integerParam<&Video::id>("profileid", 1, kProfiles).required(),
    profileChoice<&ProfileSettings::codec>("codec").among<codecs>(kByCamera),
    profileChoice<&ProfileSettings::resolution>("resolution").among<resolutions>(kByCamera),
    profileChoice<&ProfileSettings::frame_rate>("framerate").among<frameRates>(kByCamera).storingNumber(),
    profileChoice<&ProfileSettings::quality_mode>("qualitymode", kQualityModes).onlyIf<hasQualityModes>(),
    integerParam<&Video::quality>("quality", 0, 100),
    profileChoice<&ProfileSettings::bit_rate>("bitrate").among<bitRates>(kByCamera).storingNumber(),
    ignoredParam("vprofileformat"));

// Five levels of ten percent each, except the lowest, which starts at 0.
int levelOf(int percent) {
  return percent < 61 ? 0 : (percent - 61) / 10 + 1;
}
int percentOf(int level) {
  return level * 10 + 55;
}

}  // namespace

class VideoEndpoint final : public ParamEndpoint<kParams, Takes::kCommand> {
  // Nothing is read for a request that names no profile.
  int apply() override {
    const auto id = queries().find("profileid");
    if (id == queries().end()) return refuseMissing();
    if (!parseInteger(id->second, 1, kProfiles, &video_.id)) return refuse("profileid");
    const int result = readCamera();
    return result == 200 ? change() : result;
  }

  int readCamera() {
    // From the record that a write compares with what is stored then, so that a switch meanwhile is noticed.
    const bool isRead = read(video_.profiles) == 200;
    video_.display = isRead ? displayMode(video_.profiles.display_system) : nullptr;
    if (video_.display == nullptr) return fail(500, "display system: cannot be read");
    const ProductInfo* known = product();
    if (known == nullptr) return 500;
    video_.hasH264 = known->has_h264;
    video_.sensor = videoSensor(known->sensor);
    return video_.sensor != nullptr ? 200 : fail(500, "product information: no video for this image sensor");
  }

  int change() {
    Video wanted = video_;
    if (take(&wanted) != 200) return 400;
    if (given("quality"))
      wanted.profiles.quality[wanted.id] = static_cast<std::uint8_t>(levelOf(wanted.quality));
    // The reply shows the consequences, but consequences alone do not store the record.
    const bool isChanged = differ(video_.profiles, wanted.profiles);
    addConsequences(&wanted);
    int result = checkCodec(wanted);
    if (result == 200) result = checkResolution(wanted);
    if (result == 200) result = checkQualityMode(wanted);
    if (result == 200) result = checkFrameRate(wanted);
    if (result != 200) return result;
    if (isChanged) write(wanted.profiles);
    result = commit();
    if (result != 200) return result;
    video_ = wanted;
    isFixed() ? noteIgnored("bitrate") : noteIgnored("quality");
    return 200;
  }

  // True if the profile has a quality, false if it has a bit rate.
  bool isFixed() const {
    return hasQualityModes(video_) ? video_.profiles.quality_mode[video_.id] == kFixedQuality
                                   : video_.profiles.codec[video_.id] == kMjpeg;
  }

  // True if the profile has the one resolution that its display system offers as MJPEG only.
  static bool mustBeMjpeg(const Video& wanted) {
    return wanted.display->largestIsMjpeg && wanted.id == 1 && wanted.profiles.resolution[1] == 0;
  }

  void addConsequences(Video* wanted) const {
    std::uint8_t& codec = wanted->profiles.codec[wanted->id];
    if (given("resolution") && !given("codec") && mustBeMjpeg(*wanted)) codec = kMjpeg;
    if (given("codec") && codec == kMjpeg && !isModeGiven())
      wanted->profiles.quality_mode[wanted->id] = kFixedQuality;
  }

  int checkCodec(const Video& wanted) {
    if (!given("codec")) return 200;
    const std::uint8_t codec = wanted.profiles.codec[wanted.id];
    if (*codecs(wanted)[codec] == '\0') return refuse("codec", anyOf(codecs(wanted)));
    if (codec == kMjpeg || !mustBeMjpeg(wanted)) return 200;
    return refuse("codec", joined({"MJPEG with ", wanted.display->resolutions[0]}));
  }

  int checkResolution(const Video& wanted) {
    if (!given("resolution") || wanted.profiles.resolution[wanted.id] != 0) return 200;
    if (wanted.display->mayHaveLargest(wanted.id, *wanted.sensor)) return 200;
    return refuse("resolution", joined({"smaller than ", wanted.display->resolutions[0]}));
  }

  bool isModeGiven() const { return hasQualityModes(video_) && given("qualitymode"); }

  // MJPEG has no constant bit rate.
  int checkQualityMode(const Video& wanted) {
    if (!isModeGiven() || wanted.profiles.quality_mode[wanted.id] != kConstantBitRate) return 200;
    const bool isMjpeg = wanted.profiles.codec[wanted.id] == kMjpeg;
    const bool isOnlyMjpeg = wanted.sensor->codecs[wanted.id - 1] == 1U << kMjpeg;
    return isMjpeg || isOnlyMjpeg ? refuse("qualitymode", "Fixquality with MJPEG") : 200;
  }

  // Checked only if the request gives a resolution or a frame rate, so that a stored pair does not block
  // other changes.
  int checkFrameRate(const Video& wanted) {
    const RateLimit limit = wanted.sensor->inLargest;
    const bool isLimited = wanted.id == limit.profile && wanted.profiles.resolution[wanted.id] == 0;
    const bool isNamed = given("resolution") || given("framerate");
    if (!isLimited || !isNamed || wanted.profiles.frame_rate[wanted.id] <= limit.rate) return 200;
    return refuse(given("framerate") ? "framerate" : "resolution",
                  joined({"at most ", Decimal(limit.rate).text(), " frames per second with ",
                          wanted.display->resolutions[0]}));
  }

  int reply() override {
    const ProfileSettings& profiles = video_.profiles;
    const std::int32_t id = video_.id;
    pair("vprofileformat", "0.9");
    pair("profileid", id);
    pair("codec", kCodecs[profiles.codec[id]]);
    pair("resolution", video_.display->resolutions[profiles.resolution[id]]);
    pair("framerate", profiles.frame_rate[id]);
    const bool hasQuality = isFixed();
    if (hasQualityModes(video_) || !hasQuality)
      pair("qualitymode", kQualityModes[hasQuality ? kFixedQuality : kConstantBitRate]);
    if (hasQuality)
      pair("quality", percentOf(profiles.quality[id]));
    else
      pair("bitrate", profiles.bit_rate[id]);
    return 200;
  }

  Video video_{};
};

namespace {

// All words that a parameter can have with the product's display systems, in any profile.
template <Words (*kWords)(const Video&)>
std::string anyProfile(Video video, const ProductInfo& product, ListOf kind = ListOf::kTexts) {
  std::string all;
  const std::string systems = displaySystemsOf(product);
  for (std::string_view rest = systems; !rest.empty();) {
    video.display = displayMode(indexOf(takeUntil(',', &rest), kDisplaySystems));
    for (video.id = 1; video.id <= kProfiles; ++video.id) {
      for (const char* word : kWords(video)) addNew(word, &all);
    }
  }
  return choiceSchema(all, kind);
}

std::string videoSchema(std::string_view param, const ProductInfo& product) {
  Video video;
  video.sensor = videoSensor(product.sensor);
  video.hasH264 = product.has_h264;
  if (param == "profileid") return {};
  if (video.sensor == nullptr || (param == "qualitymode" && !hasQualityModes(video))) return "-";
  if (param == "codec") return anyProfile<codecs>(video, product);
  if (param == "resolution") return anyProfile<resolutions>(video, product);
  if (param == "framerate") return anyProfile<frameRates>(video, product, ListOf::kNumbers);
  if (param == "bitrate") return anyProfile<bitRates>(video, product, ListOf::kNumbers);
  return {};
}

}  // namespace

template <>
const Api kApi<VideoEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPicture,
     .summary = "One of the four video profiles.",
     .records = "`profile`",
     .dependent = "codec resolution framerate qualitymode bitrate",
     .params =
         {{"profileid", "The video profile."},
          {"codec", "The codec; the profile and the sensor decide which there are.", nullptr, nullptr,
           "`MJPEG`, `MPEG4`, and `H264` if the camera has it"},
          {"resolution", "The size of the picture; the largest is not for every profile.", nullptr, nullptr,
           "one of the display system's (see sensor_output.cgi); the smallest only on ov9710 and hm1375"},
          {"framerate", "The frame rate.", "frames/s", nullptr,
           "one of the display system's; on mt9v136 at least `5` in profile 1"},
          {"qualitymode",
           "Chooses a constant bit rate or a fixed quality; only on ov7740, ov9710 and hm1375, on others any "
           "value is ignored."},
          {"quality", "The quality; stored for later while the profile has a bit rate.", "%"},
          {"bitrate", "The bit rate; stored for later while the profile has a quality.", "kbit/s", nullptr,
           "`64`, `128`, `256`, `384`, `512`, `768`, `1024`, `1536`, `2048`; on ov9710 and hm1375, and in "
           "profile 1 of ip2986, also `3072` and `4096`"}},
     .reply = {{"vprofileformat", ApiType::kText, "Always `0.9`."},
               {"profileid"},
               {"codec"},
               {"resolution"},
               {"framerate", ApiType::kNumber,
                "The frame rate, which need not be one that the current display system accepts."},
               {.name = "qualitymode",
                .type = ApiType::kText,
                .meaning =
                    "`bitrate` follows, or `quality`; missing for MJPEG on a sensor without the parameter.",
                .words = kQualityModes,
                .isOptional = true},
               {.name = "quality",
                .type = ApiType::kNumber,
                .meaning = "The quality's level, `55`, `65`, `75`, `85` or `95`; with `Fixquality` or MJPEG.",
                .isOptional = true},
               {.name = "bitrate", .isOptional = true}},
     .codes = {{500,
                "The sensor is not ov7740, ov9710, mt9v136, mdin220, ip2986, hm1375 or a variant of one of "
                "them."}},
     .isOffered = [](const ProductInfo& product) { return videoSensor(product.sensor) != nullptr; },
     .schema = videoSchema});
template struct EndpointOf<VideoEndpoint>;

}  // namespace camera
