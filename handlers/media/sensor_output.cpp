// sensor_output.cgi: the display systems that the sensor supports, and the switch to another.
#include <algorithm>
#include <iterator>

#include "handlers/endpoint.h"
#include "handlers/media/sensor_tables.h"
#include "platform/product/sensor.h"
#include "platform/store/records/image.h"
#include "platform/store/records/motiond.h"
#include "platform/store/records/profile.h"

namespace camera {
namespace {

struct Output {
  std::string supports;  // the names, separated by commas
  int current = 0;
};

bool takeCurrent(std::string_view value, Output& output) {
  const int found = indexOf(value, kDisplaySystems);
  if (found < 0 || !isOneOf(value, output.supports)) return false;
  output.current = found;
  return true;
}

constexpr auto kParams = paramRows<Output>(
    ownParam<takeCurrent, Output>("current", "one of the names after supports= in the reply"));

std::uint8_t adapted(std::uint8_t rate, const DisplayMode& display) {
  const auto change = std::find_if(display.rateChanges.begin(), display.rateChanges.end(),
                                   [rate](const RateChange& c) { return c.from == rate; });
  return std::min(change == display.rateChanges.end() ? rate : change->to, display.fastest);
}

// Applies what a switch to the display system does to the profiles. A frame rate that it does not accept may
// stay.
void adapt(ProfileSettings* profiles, int number, const DisplayMode& display) {
  profiles->display_system = static_cast<std::uint8_t>(number);
  if (display.subtype != 0) profiles->display_subtype = display.subtype;
  for (int profile = 1; profile <= kProfiles; ++profile) {
    std::uint8_t& rate = profiles->frame_rate[profile];
    rate = adapted(rate, display);
    std::uint8_t& resolution = profiles->resolution[profile];
    if (resolution == 0 && profile > 1 && display.largest != Largest::kAll) resolution = 1;
  }
  if (display.largestIsMjpeg && profiles->resolution[1] == 0) profiles->codec[1] = kMjpeg;
}

}  // namespace

class SensorOutputEndpoint final : public StateEndpoint<kParams> {
  int load() override {
    state.supports = supportedDisplaySystems();
    if (state.supports.empty()) return fail(500, "display systems: cannot be read");
    std::replace(state.supports.begin(), state.supports.end(), ' ', ',');
    state.current = displaySystemInUse();
    const bool isKnown = displayMode(state.current) != nullptr;
    return isKnown ? 200 : fail(500, "display system: cannot be read");
  }

  int carryOut(Output& wanted) override {
    if (wanted.current == state.current) return 200;
    const DisplayMode& display = *displayMode(wanted.current);
    ProfileSettings profiles;
    if (read(profiles) != 200) return 500;
    adapt(&profiles, wanted.current, display);
    if (!display.detectsMotion && switchMotionOff() != 200) return 500;
    if (display.videoFormat != 0 && setVideoFormat(display.videoFormat) != 200) return 500;
    write(profiles);
    return commit(500);
  }

  int switchMotionOff() {
    MotionSettings motion;
    if (read(motion) != 200) return 500;
    if (motion.enable != 1) return 200;
    motion.enable = 0;
    write(motion);
    return 200;
  }

  int setVideoFormat(std::uint8_t format) {
    ImageSettings image;
    if (read(image) != 200) return 500;
    image.video_in_format = format;
    write(image);
    return 200;
  }

  int reply() override {
    list("supports", state.supports);
    pair("current", kDisplaySystems[state.current]);
    return 200;
  }
};

template <>
const Api kApi<SensorOutputEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPicture,
     .summary = "The display system, which is the size and standard of the sensor's picture.",
     .records = "`motiond`, `image`, `profile`",
     .params = {{"current", "Switches to the display system; the current one changes nothing.", nullptr,
                 nullptr, "one of the names in `supports`"}},
     .reply = {{"supports", ApiType::kTexts, "The display systems of the camera, at most three."},
               {"current"}},
     .schema = [](std::string_view /*param*/, const ProductInfo& product) {
       return choiceSchema(displaySystemsOf(product), ListOf::kTexts);
     }});
template struct EndpointOf<SensorOutputEndpoint>;

}  // namespace camera
