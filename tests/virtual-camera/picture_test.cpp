// Pictures of given settings and moments.
#include "virtual-camera/picture/picture.h"

#include <gtest/gtest.h>

#include "handlers/media/sensor_tables.h"
#include "platform/text.h"
#include "virtual-camera/picture/jpeg.h"

namespace camera::picture {
namespace {

constexpr std::int64_t kNoon = 12 * 3'600'000;

Frame shot(const Look& look, const Moment& moment) {
  Scene scene;
  return take(look, moment, &scene);
}

// Returns how many pixels a motion of that strength changes by more than noise does.
int moved(const Look& look, Moment moment, int strength) {
  const Frame still = shot(look, moment);
  moment.motion = strength;
  const Frame moving = shot(look, moment);
  int count = 0;
  for (std::size_t i = 0; i < still.y.size(); ++i) count += std::abs(still.y[i] - moving.y[i]) > 24 ? 1 : 0;
  return count;
}

TEST(Picture, IsTheSameAtTheSameInstantWhateverWasDrawnBefore) {
  const Look look{.osd = {1, 1, "Gate"}, .noiseReduction = 0};
  const Moment moment{.instant = 23 * kNoon / 12 + 4321, .pan = 7, .tilt = 3, .motion = 42};
  Scene scene;
  Frame first = take(look, moment, &scene);
  (void)take(look, {.instant = kNoon}, &scene);
  Frame second = take(look, moment, &scene);
  EXPECT_EQ(toJpeg(first, 75), toJpeg(second, 75));
}

TEST(Picture, StrongerMotionAndALongerExposureMoveMoreWhereverTheHeadPoints) {
  Look sharp{.longestExposure = 1.0 / 200};
  sharp.image.auto_exposure = 0;
  Look blurred = sharp;
  blurred.longestExposure = 1.0 / 20;
  for (const int tilt : {-30, 0, 30, 60, 90}) {
    const Moment moment{.instant = kNoon, .pan = 2 * tilt - 10, .tilt = tilt};
    const int weak = moved(sharp, moment, 1);
    EXPECT_GT(weak, 20) << tilt;
    EXPECT_GT(moved(sharp, moment, 10'000), 2 * weak) << tilt;
  }
  const Moment noon{.instant = kNoon};
  EXPECT_GT(moved(blurred, noon, 10'000), moved(sharp, noon, 10'000) * 11 / 10);
}

// The edges of the smallest pictures are no multiples of a JPEG block.
TEST(Picture, HasTheSizeOfEveryResolution) {
  for (int number = 0; const DisplayMode* mode = displayMode(number); ++number) {
    for (const std::string_view size : mode->resolutions) {
      Look look{.osd = {1, 1, "Gate"}};
      const std::size_t cross = size.find('x');
      readNumber(size.substr(0, cross), &look.width);
      readNumber(size.substr(cross + 1), &look.height);
      Frame frame = shot(look, {.instant = kNoon});
      const std::string jpeg = toJpeg(frame, 75);
      const auto at = [&, header = jpeg.find("\xFF\xC0")](std::size_t i) {
        return static_cast<unsigned char>(jpeg.at(header + i)) * 256 +
               static_cast<unsigned char>(jpeg.at(header + i + 1));
      };
      EXPECT_EQ(std::to_string(at(7)) + "x" + std::to_string(at(5)), size);
    }
  }
}

}  // namespace
}  // namespace camera::picture
