// Reads the records that show in the picture.
#include "virtual-camera/picture/look.h"

#include <algorithm>
#include <ctime>

#include "handlers/media/sensor_tables.h"
#include "platform/clock/time_zones.h"
#include "platform/product/product_info.h"
#include "platform/product/sensor.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/httpsvr.h"
#include "platform/store/records/privacy.h"
#include "platform/store/records/profile.h"
#include "platform/store/records/tzone.h"
#include "platform/store/settings.h"
#include "platform/text.h"

namespace camera::picture {
namespace {

constexpr double kLongExposure = 0.25;              // of the word "-1"
constexpr int kQualities[] = {55, 65, 75, 85, 95};  // as video.cgi shows the stored levels

// The record, or the factory settings if it cannot be read.
template <class Record>
Record stored() {
  Record record;
  (void)loadRecord(&record);
  return record;
}

void size(std::string_view words, int* width, int* height) {
  const std::string_view first = takeUntil('x', &words);
  readNumber(first, width);
  readNumber(words, height);
}

void readProfile(int number, Look* look) {
  const auto profile = stored<ProfileSettings>();
  if (const DisplayMode* mode = displayMode(profile.display_system)) {
    int width = 0;
    int height = 0;
    size(mode->resolutions[0], &width, &height);
    look->aspect = static_cast<double>(height) / width;
    size(mode->resolutions[profile.resolution[number]], &look->width, &look->height);
  }
  look->frameRate = std::max<int>(profile.frame_rate[number], 1);
  look->quality = kQualities[profile.quality[number]];
}

// Returns the capability's names; null if the sensor has none.
const Names* namesFor(const char* parameter, const SensorCapabilities& sensor) {
  for (const Capability& capability : capabilities())
    if (capability.parameter == std::string_view{parameter}) return namesOf(sensor.values(capability));
  return nullptr;
}

// Which white balance a stored number means depends on the sensor.
WhiteBalance whiteBalance(const Names* names, std::size_t number) {
  constexpr std::string_view kNames[] = {"auto", "disabled", "fixed_indoor", "fixed_outdoor", "fixed_fluor"};
  if (names == nullptr || number >= names->all.size()) return WhiteBalance::kAuto;
  const auto* found = std::find(std::begin(kNames), std::end(kNames), names->all[number]);
  return found == std::end(kNames) ? WhiteBalance::kAuto : static_cast<WhiteBalance>(found - kNames);
}

double exposureAt(int position) {
  const std::string times = exposureTimes();
  std::string_view rest = times;
  for (; position > 0 && !rest.empty(); --position) takeUntil(' ', &rest);
  int part = 0;
  if (!readNumber(exposureTime(takeUntil(' ', &rest)), &part) || part == 0) return Look{}.longestExposure;
  return part < 0 ? kLongExposure : 1.0 / part;
}

void readSensor(const ProductInfo& product, Look* look) {
  look->longestExposure = exposureAt(look->image.max_exposure_time);
  SensorCapabilities sensor;
  if (!sensor.init(product)) return;
  look->whiteBalance = whiteBalance(namesFor("whitebalance", sensor), look->image.white_balance);
  if (const Names* levels = namesFor("noisereduction", sensor)) {
    const auto highest = static_cast<double>(levels->all.size() - 1);
    look->noiseReduction = std::min(1.0, look->image.noise_reduction / highest);
  }
}

std::int64_t localShift() {
  constexpr std::int64_t kDay = 86400;
  const auto clock = stored<ClockSettings>();
  const std::int64_t shift = clock.offset_days * kDay + clock.offset_seconds;
  const LocalZone zone = localZone(stored<TimeZoneSettings>());
  return (shift + offsetAt(zone, std::time(nullptr) + shift)) * 1000;
}

}  // namespace

Look readLook(int profile) {
  Look look{.image = stored<ImageSettings>(), .ir = stored<IrSettings>(), .osd = stored<OsdSettings>()};
  readProfile(profile, &look);
  if (const ProductInfo* product = productInfo()) {
    readSensor(*product, &look);
    look.hasNightSwitch = product->has_icr;
    look.hasLeds = product->has_irled;
    const auto privacy = stored<PrivacySettings>();
    look.isCovered = product->has_privacy && privacy.enable != 0 && privacy.manual != 0;
  }
  look.localShift = localShift();
  return look;
}

}  // namespace camera::picture
