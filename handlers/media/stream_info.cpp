// stream_info.cgi: the camera's streams, and the values offered for their settings.
#include "handlers/endpoint.h"
#include "handlers/media/audio_switch.h"
#include "handlers/media/sensor_tables.h"
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
    displaySystem_ = displaySystemInUse();
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
    line("vban", 0, {stream->bans});
    return 200;
  }

  // Adds a line. The number is appended to its key, unless it is 0.
  void line(std::string_view key, int number, std::initializer_list<std::string_view> value) {
    const Decimal digits(number);
    pair(joined({key, number == 0 ? "" : digits.text()}), joined(value));
  }

  // Adds a line for each profile, all with the same value.
  void lines(std::string_view key, std::string_view value) {
    for (int i = 1; i <= kProfiles; ++i) line(key, i, {value});
  }

  void replyCodecs(bool hasH264) {
    const std::string all = listed(Words{kCodecs}.first(hasH264 ? 3 : 2));
    line("videos", 0, {all});
    line("codeclist", 1, {displaySystem_ == 0 ? all : kUsualCodecs});
    line("codeclist", 2, {kUsualCodecs});
    line("codeclist", 3, {kCodecs[kMjpeg]});
    line("codeclist", 4, {kUsualCodecs});
    line("audios", 0, {"PCM,ADPCM,AAC"});
  }

  void replyResolutions(const StreamSensor& stream, const VideoSensor& video) {
    const Words all = Words{display_->resolutions}.first(video.resolutions);
    line("resolutions", 0, {listed(all)});
    for (int i = 1; i <= kProfiles; ++i) {
      const bool isSmaller = (stream.smaller & profileBit(i)) != 0;
      line("resolutionlist", i, {listed(all.subspan(isSmaller ? 1 : 0))});
    }
  }

  void replyRates(const StreamSensor& stream, const VideoSensor& video) {
    const std::string frameRates = listed(display_->offered.of(stream.offersFastRates));
    line("framerates", 0, {frameRates});
    lines("frameratelist", frameRates);
    line("qualitymodes", 0, {listed(Words{kQualityModes}.first(video.hasQualityModes ? 2 : 1))});
    const std::size_t count = video.manyBitRates != 0 ? std::size(kBitRates) : kCommonBitRates;
    const std::string bitRates = listed(Words{kBitRates}.first(count));
    line("vbitrates", 0, {bitRates});
    for (int i = 1; i <= kProfiles; ++i) line("vbitratelist", i, {i == 3 ? "" : bitRates});
    line("qualities", 0, {kQualities});
    lines("qualitylist", kQualities);
  }

  void replySound() {
    const std::string volumes = listed(kVolumes);
    line("asamplerates", 0, {"8"});
    line("abitrates", 0, {"128"});
    line("micvol", 0, {volumes});
    line("cur_micvol", 0, {Decimal(audio_.mic_volume).text()});
    line("speakervol", 0, {volumes});
    line("cur_speakervol", 0, {Decimal(audio_.speaker_volume).text()});
  }

  void replyVideoProfiles(bool hasModule) {
    line("vprofileformat", 0, {"0.9"});
    line("vprofilenum", 0, {Decimal(kProfiles).text()});
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
    line("aprofilenum", 0, {Decimal(std::size(kAudioProfiles)).text()});
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

template void serve<StreamInfoEndpoint>();

}  // namespace camera
