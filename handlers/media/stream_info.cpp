// stream_info.cgi: the camera's streams, and the values offered for their settings.
#include "handlers/endpoint.h"
#include "handlers/media/audio_switch.h"
#include "handlers/media/sensor_tables.h"
#include "handlers/numbered.h"
#include "platform/product/sensor.h"
#include "platform/store/records/profile.h"

namespace camera {
namespace {

constexpr char kExtraModule[] = "myvelkor";  // serves the streams under a second path too
constexpr const char* kStreamNames[] = {"mjpg", "ACVS", "ACVS-H264"};  // by codec
constexpr std::string_view kQualities = "55,65,75,85,95";
constexpr std::string_view kUsualCodecs = "MPEG4,H264";  // offered whether the camera has H264 or not

constexpr struct {
  const char* codec;
  const char* path;
} kAudioProfiles[] = {{"PCM", "ACAS.cgi"}, {"ADPCM", "ACAS-MSADPCM.cgi"}, {"AAC", "ACAS-AAC.cgi"}};

}  // namespace

class StreamInfoEndpoint final : public ReadOnlyEndpoint {
 public:
  // A failure of load is reported before an unknown parameter.
  StreamInfoEndpoint() : ReadOnlyEndpoint(Takes::kChanges) {}

 private:
  int load() override {
    if (read(profiles_, audio_) != 200) return 500;
    displaySystem_ = profiles_.display_system;
    display_ = displayMode(displaySystem_);
    return display_ != nullptr ? 200 : fail(500, "display system: cannot be read");
  }

  int reply() override {
    const ProductInfo* known = product();
    if (known == nullptr) return 500;
    const StreamSensor* stream = streamSensor(known->sensor);
    const VideoSensor* video = videoSensor(known->sensor);
    if (stream == nullptr || video == nullptr)
      return fail(500, "product information: no streams for this image sensor");
    replyCodecs(known->has_h264);
    replyResolutions(*stream, *video);
    replyRates(*stream, *video);
    replySound();
    const bool hasModule = known->hasModule(kExtraModule);
    replyVideoProfiles(hasModule);
    replyAudioProfiles(hasModule);
    isJson() ? value("vban", bans(stream->bans)) : pair("vban", stream->bans);
    return 200;
  }

  // The entries of the text as objects, without the fields that do not restrict them.
  static std::string bans(std::string_view text) {
    static constexpr const char* kFields[] = {"profile", "codec", "resolution", "framerates"};
    JsonArray entries;
    while (!text.empty()) {
      std::string_view rest = takeUntil(':', &text);
      JsonObject entry;
      for (const char* name : kFields) {
        const std::string_view field = takeUntil('|', &rest);
        if (field == "-") continue;
        const bool areRates = name == kFields[3];
        if (areRates) {
          entry.addValue(name, jsonList(field, ListOf::kNumbers));
        } else {
          isJsonInteger(field) ? entry.addValue(name, field) : entry.add(name, field);
        }
      }
      entries.add(entry.text());
    }
    return entries.text();
  }

  // Adds a text. The number is appended to its key.
  void line(std::string_view key, int number, std::initializer_list<std::string_view> value) {
    pair(numbered(key, number), joined(value));
  }

  // Adds a list for each profile, all with the same items.
  void lists(std::string_view key, std::string_view items, ListOf kind) {
    for (int i = 1; i <= kProfiles; ++i) list(numbered(key, i), items, kind);
  }

  void replyCodecs(bool hasH264) {
    const std::string all = listed(Words{kCodecs}.first(hasH264 ? 3 : 2));
    list("videos", all);
    list("codeclist1", displaySystem_ == 0 ? all : kUsualCodecs);
    list("codeclist2", kUsualCodecs);
    list("codeclist3", kCodecs[kMjpeg]);
    list("codeclist4", kUsualCodecs);
    list("audios", "PCM,ADPCM,AAC");
  }

  void replyResolutions(const StreamSensor& stream, const VideoSensor& video) {
    const Words all = Words{display_->resolutions}.first(video.resolutions);
    list("resolutions", listed(all));
    for (int i = 1; i <= kProfiles; ++i) {
      const bool isSmaller = (stream.smaller & profileBit(i)) != 0;
      list(numbered("resolutionlist", i), listed(all.subspan(isSmaller ? 1 : 0)));
    }
  }

  void replyRates(const StreamSensor& stream, const VideoSensor& video) {
    const std::string frameRates = listed(display_->offered.of(stream.offersFastRates));
    list("framerates", frameRates, ListOf::kNumbers);
    lists("frameratelist", frameRates, ListOf::kNumbers);
    list("qualitymodes", listed(Words{kQualityModes}.first(video.hasQualityModes ? 2 : 1)));
    const std::size_t count = video.manyBitRates != 0 ? std::size(kBitRates) : kCommonBitRates;
    const std::string bitRates = listed(Words{kBitRates}.first(count));
    list("vbitrates", bitRates, ListOf::kNumbers);
    for (int i = 1; i <= kProfiles; ++i)
      list(numbered("vbitratelist", i), i == 3 ? "" : bitRates, ListOf::kNumbers);
    list("qualities", kQualities, ListOf::kNumbers);
    lists("qualitylist", kQualities, ListOf::kNumbers);
  }

  void replySound() {
    const std::string volumes = listed(kVolumes);
    list("asamplerates", "8", ListOf::kNumbers);
    list("abitrates", "128", ListOf::kNumbers);
    list("micvol", volumes, ListOf::kNumbers);
    pair("cur_micvol", audio_.mic_volume);
    list("speakervol", volumes, ListOf::kNumbers);
    pair("cur_speakervol", audio_.speaker_volume);
  }

  void replyVideoProfiles(bool hasModule) {
    pair("vprofileformat", "0.9");
    pair("vprofilenum", kProfiles);
    for (int i = 1; i <= kProfiles; ++i) {
      const std::uint8_t codec = profiles_.codec[i];
      const std::string path = joined({kStreamNames[codec], ".cgi?profileid=", Decimal(i).text()});
      line("vprofile", i, {kCodecs[codec]});
      line("vprofileurl", i, {"/video/", path});
      if (hasModule) line("vDprofileurl", i, {"/av2/", path});
      line("vprofileres", i, {display_->resolutions[profiles_.resolution[i]]});
    }
  }

  void replyAudioProfiles(bool hasModule) {
    pair("aprofilenum", static_cast<int>(std::size(kAudioProfiles)));
    int i = 0;
    for (const auto& [codec, path] : kAudioProfiles) {
      line("aprofile", ++i, {codec});
      line("aprofileurl", i, {"/audio/", path});
      if (hasModule) line("aDprofileurl", i, {"/av2/", path});
    }
  }

  ProfileSettings profiles_;
  AudioSettings audio_;
  int displaySystem_ = 0;
  const DisplayMode* display_ = nullptr;
};

constexpr ApiKey kBan[] = {
    {.name = "profile", .type = ApiType::kNumber, .meaning = "The video profile.", .isOptional = true},
    {.name = "codec", .type = ApiType::kText, .meaning = "Its codec.", .words = kCodecs, .isOptional = true},
    {.name = "resolution", .type = ApiType::kText, .meaning = "Its resolution.", .isOptional = true},
    {.name = "framerates", .type = ApiType::kNumbers, .meaning = "Its frame rates.", .isOptional = true}};
constexpr char kSecondPath[] = "A second path, if the module `myvelkor` is installed.";
template <>
const Api kApi<StreamInfoEndpoint> = {
    .subsystem = Subsystem::kPicture,
    .summary = "What a client needs in order to offer the camera's streams.",
    .records = "none; reads `audio`, `profile`",
    .reply = {{"videos", ApiType::kTexts, "The video codecs of the camera."},
              {"codeclist#", ApiType::kTexts, "The codecs to offer for each video profile."},
              {"audios", ApiType::kTexts, "The audio codecs."},
              {"resolutions", ApiType::kTexts, "The resolutions of the camera."},
              {"resolutionlist#", ApiType::kTexts, "The resolutions to offer for each video profile."},
              {"framerates", ApiType::kNumbers, "The frame rates of the camera, in frames per second."},
              {"frameratelist#", ApiType::kNumbers, "The frame rates to offer for each video profile."},
              {"qualitymodes", ApiType::kTexts,
               "`CBR` and `Fixquality` if a client may choose, else `CBR` alone."},
              {"vbitrates", ApiType::kNumbers, "The video bit rates of the camera, in kbit/s."},
              {"vbitratelist#", ApiType::kNumbers,
               "The bit rates to offer for each video profile; none for profile 3."},
              {"qualities", ApiType::kNumbers, "The qualities, as video.cgi shows them."},
              {"qualitylist#", ApiType::kNumbers, "The qualities to offer for each video profile."},
              {"asamplerates", ApiType::kNumbers, "The audio sample rates, in kHz."},
              {"abitrates", ApiType::kNumbers, "The audio bit rates, in kbit/s."},
              {"micvol", ApiType::kNumbers, "The volumes of the microphone."},
              {"cur_micvol", ApiType::kNumber,
               "The position of its current volume in the list, counted from 0."},
              {"speakervol", ApiType::kNumbers, "The volumes of the speaker."},
              {"cur_speakervol", ApiType::kNumber,
               "The position of its current volume in the list, counted from 0."},
              {"vprofileformat", ApiType::kText, "Always `0.9`."},
              {"vprofilenum", ApiType::kNumber, "The number of video profiles."},
              {"vprofile#", ApiType::kText, "The codec of each video profile.", kCodecs},
              {"vprofileurl#", ApiType::kText, "Its path."},
              {.name = "vDprofileurl#", .type = ApiType::kText, .meaning = kSecondPath, .isOptional = true},
              {"vprofileres#", ApiType::kText, "Its resolution."},
              {"aprofilenum", ApiType::kNumber, "The number of audio profiles."},
              {"aprofile#", ApiType::kText, "The codec of each audio profile."},
              {"aprofileurl#", ApiType::kText, "Its path."},
              {.name = "aDprofileurl#", .type = ApiType::kText, .meaning = kSecondPath, .isOptional = true},
              {"vban",
               ApiType::kObjects,
               "Some combinations that video.cgi does not accept; a member that is missing can have any "
               "value. In "
               "text, `profile|codec|resolution|frame rates|-|-`, separated by `:`, with `-` for any value.",
               {},
               kBan}},
    .codes = {{500, "The sensor is not ov7740, ov9710, ip2986, hm1375 or a variant of one of them."}},
    .isOffered = [](const ProductInfo& product) { return streamSensor(product.sensor) != nullptr; }};
template struct EndpointOf<StreamInfoEndpoint>;

}  // namespace camera
