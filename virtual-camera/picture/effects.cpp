// What the sensor makes of the light. The loops are simple so that the compiler uses vectors.
#include "virtual-camera/picture/effects.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace camera::picture {
namespace {

constexpr std::uint32_t kGrain = 4096;  // length of the noise
constexpr int kWidest = 2048;           // pixels of a row

using Curve = std::array<std::uint8_t, 256>;

Curve curveOf(const Tone& tone) {
  Curve curve{};
  for (int i = 0; i < 256; ++i) {
    double light = std::min(i * tone.exposure / 255, 1.0);
    light += tone.shadows * light * (1 - light) * (1 - light);
    const double value = (light * 255 - 128) * tone.contrast + 128 + tone.brightness;
    curve[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
  }
  return curve;
}

std::uint8_t limited(int value) {
  return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

// In 256ths.
struct ColorTurn {
  explicit ColorTurn(const Tone& tone)
      : along(static_cast<int>(256 * tone.saturation * std::min(tone.exposure, 2.0) * std::cos(tone.hue))),
        across(static_cast<int>(256 * tone.saturation * std::min(tone.exposure, 2.0) * std::sin(tone.hue))),
        blue(static_cast<int>(256 * tone.blue)),
        red(static_cast<int>(256 * tone.red)) {}
  int along, across, blue, red;
};

// Pixels are blue, green, red and an unused byte.
void toLuminance(const std::uint8_t* pixels, int count, const Curve& curve, std::uint8_t* y) {
  for (int x = 0; x < count; ++x, pixels += 4)
    y[x] = curve[(29 * pixels[0] + 150 * pixels[1] + 77 * pixels[2]) >> 8];
}

// Takes each second pixel; the scene has no finer colours.
void toColors(const std::uint8_t* pixels, int count, const ColorTurn& turn, std::uint8_t* cb,
              std::uint8_t* cr) {
  for (int x = 0; x < count; ++x, pixels += 8) {
    const int blue = (128 * pixels[0] - 85 * pixels[1] - 43 * pixels[2]) >> 8;
    const int red = (128 * pixels[2] - 107 * pixels[1] - 21 * pixels[0]) >> 8;
    cb[x] = limited(128 + ((blue * turn.along - red * turn.across + turn.blue) >> 8));
    cr[x] = limited(128 + ((blue * turn.across + red * turn.along + turn.red) >> 8));
  }
}

// Each pixel moves away from the mean of its neighbourhood, or towards it. The edge stays as it is.
void sharpen(double sharpness, Frame* frame) {
  const int amount = static_cast<int>(std::lround(sharpness * 256 / 9));
  if (amount == 0) return;
  const std::vector<std::uint8_t> before = frame->y;
  std::array<std::int16_t, kWidest> sums{};
  for (int r = 1; r + 1 < frame->rows; ++r) {
    const std::uint8_t* const middle =
        &before[static_cast<std::size_t>(r) * static_cast<std::size_t>(frame->stride)];
    const std::uint8_t* const above = middle - frame->stride;
    const std::uint8_t* const below = middle + frame->stride;
    std::uint8_t* const y = frame->row(r);
    for (int x = 0; x < frame->stride; ++x)
      sums[static_cast<std::size_t>(x)] = static_cast<std::int16_t>(above[x] + middle[x] + below[x]);
    const std::int16_t* const sum = sums.data();
    for (int x = 1; x + 1 < frame->stride; ++x)
      y[x] = limited(middle[x] + ((9 * middle[x] - sum[x - 1] - sum[x] - sum[x + 1]) * amount >> 8));
  }
}

std::uint32_t nextRandom(std::uint32_t* state) {
  *state = *state * 1664525U + 1013904223U;
  return *state >> 16U;
}

void addNoise(double deviation, std::uint32_t seed, Frame* frame) {
  if (deviation < 0.5) return;
  std::array<std::int16_t, kGrain + kWidest> grain;
  for (std::int16_t& value : grain) {
    const auto sum = static_cast<int>(nextRandom(&seed) % 256 + nextRandom(&seed) % 256) - 255;
    value = static_cast<std::int16_t>(std::lround(sum * deviation / 104));
  }
  for (int r = 0; r < frame->rows; ++r) {
    const std::int16_t* const values = &grain[nextRandom(&seed) % kGrain];
    std::uint8_t* const y = frame->row(r);
    for (int x = 0; x < frame->stride; ++x) y[x] = limited(y[x] + values[x]);
  }
}

}  // namespace

void develop(cairo_surface_t* surface, const Tone& tone, Frame* frame) {
  const Curve curve = curveOf(tone);
  const ColorTurn turn(tone);
  const std::uint8_t* pixels = cairo_image_surface_get_data(surface);
  for (int r = 0; r < frame->rows; ++r, pixels += cairo_image_surface_get_stride(surface)) {
    toLuminance(pixels, frame->stride, curve, frame->row(r));
    if (r % 2 == 0) {
      toColors(pixels, frame->stride / 2, turn, frame->colorRow(frame->cb, r / 2),
               frame->colorRow(frame->cr, r / 2));
    }
  }
  sharpen(tone.sharpness, frame);
  addNoise(tone.noise, tone.seed, frame);
}

}  // namespace camera::picture
