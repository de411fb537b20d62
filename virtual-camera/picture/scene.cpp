// Draws the street. Positions and sizes are in degrees: x to the right of where the camera points, y down
// from the horizon.
#include "virtual-camera/picture/scene.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace camera::picture {
namespace {

constexpr double kWidth = 60;   // of the view
constexpr double kFarOut = 45;  // nothing this far from the middle is seen
constexpr double kFront = 4.5;  // of the houses, below the horizon
constexpr double kStreet = 9;
constexpr double kLighthouseAt = 13;
constexpr double kNight = 0.12;  // brightness of the street by night
constexpr double kLit = 0.55;    // the same in the light of the LEDs
constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kHour = 3600 * kSecond;
constexpr std::int64_t kStillTime = 10 * kSecond;  // the sky changes so often

struct Rgb {
  double r, g, b;
};
constexpr Rgb kWalls[] = {{0.80, 0.72, 0.58}, {0.62, 0.45, 0.38}, {0.72, 0.74, 0.70}, {0.55, 0.60, 0.66}};
constexpr Rgb kCars[] = {{0.15, 0.25, 0.65}, {0.85, 0.75, 0.15}, {0.85, 0.85, 0.88}};

Rgb between(Rgb a, Rgb b, double part) {
  return {a.r + (b.r - a.r) * part, a.g + (b.g - a.g) * part, a.b + (b.b - a.b) * part};
}

// From 0 to 1; the same for the same number.
double chance(unsigned number) {
  number = (number ^ 61U ^ number >> 16U) * 0x9E3779B1U;
  number = (number ^ number >> 15U) * 0x85EBCA6BU;
  return static_cast<double>(number ^ number >> 13U) / 4294967296.0;
}

double ramp(double value, double from, double to) {
  const double part = std::clamp((value - from) / (to - from), 0.0, 1.0);
  return part * part * (3 - 2 * part);
}

double hourOf(std::int64_t instant) {
  constexpr std::int64_t kDay = 24 * kHour;
  return static_cast<double>((instant % kDay + kDay) % kDay) / static_cast<double>(kHour);
}

int rounded(int pixels) {
  return (pixels + 15) / 16 * 16;
}

Surface blank(const View& view) {
  return Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, rounded(view.width), rounded(view.height)));
}

class Painter {
 public:
  Painter(cairo_surface_t* surface, const View& view)
      : pen_(cairo_create(surface)), view_(view), day_(daylight(view.instant)), shade_(brightnessOf(view)) {
    cairo_translate(pen(), view.width / 2.0, view.height / 2.0);
    cairo_scale(pen(), (view.mirror ? -1 : 1) * view.width / kWidth,
                (view.flip ? -1 : 1) * view.height / (kWidth * view.aspect));
    cairo_translate(pen(), 0, view.tilt);
  }

  void paintStill() {
    sky();
    ground();
    for (unsigned i = 0; i < 40; ++i) house(i);
    lighthouse();
    for (int i = 0; i < 24; ++i) lamp(15 * i);
    if (view_.isLit) fallOff();
  }

  // In every view there is something that moves, wherever the head points.
  void paintMotion() {
    constexpr double kSpeed = 20;  // degrees a second
    const double way = kSpeed * view_.exposure;
    const int copies = std::clamp(static_cast<int>(way * 4), 1, 8);
    const double size = std::min(0.6 + 0.5 * std::log10(1 + view_.motion), 3.2);
    const double seconds = static_cast<double>(view_.instant % (60 * kSecond)) / kSecond;
    alpha_ = copies == 1 ? 1 : 1.6 / copies;
    for (int i = 0; i < 6 * copies; ++i) {
      const int copy = i / 6;
      const double azimuth = 60.0 * (i % 6) + kSpeed * seconds - way * copy / copies;
      at(azimuth, kStreet, size, [&] { car(kCars[i % 3]); });
      for (const int height : {-35, 15, 40, 65, 90})
        at(azimuth + height, -height, size, [&] { bird(0.5 * std::sin(12 * seconds)); });
    }
  }

 private:
  cairo_t* pen() const { return pen_.get(); }

  // Moves the origin there, unless it is out of sight, and draws.
  template <class Draw>
  void at(double azimuth, double y, double size, Draw draw) {
    const double x = std::remainder(azimuth - view_.pan, 360);
    if (std::abs(x) > kFarOut) return;
    cairo_save(pen());
    cairo_translate(pen(), x, y);
    cairo_scale(pen(), size, size);
    draw();
    cairo_restore(pen());
  }

  // Outlines, which fill and glow then fill: with a paint, or with light of its own.
  void box(double x, double y, double width, double height) { cairo_rectangle(pen(), x, y, width, height); }
  void band(double y, double height) { box(-kFarOut, y, 2 * kFarOut, height); }
  void disc(double x, double y, double radius) {
    cairo_new_sub_path(pen());
    cairo_arc(pen(), x, y, radius, 0, 2 * std::numbers::pi);
  }
  void shape(std::initializer_list<std::pair<double, double>> corners) {
    for (const auto& [x, y] : corners) cairo_line_to(pen(), x, y);
    cairo_close_path(pen());
  }
  void glow(Rgb c, double alpha = 1) {
    cairo_set_source_rgba(pen(), c.r, c.g, c.b, alpha);
    cairo_fill(pen());
  }
  void fill(Rgb c) { glow({c.r * shade_, c.g * shade_, c.b * shade_}, alpha_); }
  void fillByNight(Rgb night, Rgb day) { day_ < 0.5 ? glow(night) : fill(day); }

  void sky() {
    const double dusk = 4 * day_ * (1 - day_);
    const Rgb top = between({0.02, 0.03, 0.09}, {0.22, 0.46, 0.82}, day_);
    const Rgb low = between(between({0.06, 0.07, 0.15}, {0.72, 0.84, 0.95}, day_), {0.95, 0.52, 0.30}, dusk);
    const Pattern gradient(cairo_pattern_create_linear(0, -60, 0, 0));
    cairo_pattern_add_color_stop_rgb(gradient.get(), 0, top.r, top.g, top.b);
    cairo_pattern_add_color_stop_rgb(gradient.get(), 1, low.r, low.g, low.b);
    cairo_set_source(pen(), gradient.get());
    cairo_paint(pen());
    for (unsigned i = 0; i < 400 && day_ < 1; ++i)
      at(360 * chance(i), -5 - 90 * chance(i + 1000), 0.12, [&] {
        box(0, 0, 1, 1), glow({1, 1, 1}, 1 - day_);
      });
    // The sun is in the middle of the panorama at noon, the moon at midnight.
    const bool isDay = day_ > 0;
    const double turn = isDay ? hourOf(view_.instant) - 12 : std::remainder(hourOf(view_.instant), 24);
    at(turn * 18 - 10, -32 + turn * turn * 0.75, 2.2, [&] {
      disc(0, 0, 1), glow(isDay ? Rgb{1, 0.95, 0.7} : Rgb{0.85, 0.87, 0.9});
    });
    const double drift = 0.02 * static_cast<double>(view_.instant / kSecond % 18000);
    for (unsigned i = 0; i < 18; ++i)
      at(i * 20 + 12 * chance(i) + drift, -17 - 26 * chance(i + 50), 1, [&] { cloud(); });
  }

  void cloud() {
    cairo_scale(pen(), 1, 0.45);
    for (int part = -1; part <= 1; ++part) disc(part * 2.4, 0.6 * part * part, 2.6 - 0.8 * part * part);
    glow({1, 1, 1}, 0.08 + 0.7 * day_);
  }

  void ground() {
    for (int i = -30; i <= 30; ++i) {
      const double x = i * kFarOut / 30;
      const double turn = (view_.pan + x) * std::numbers::pi / 180;
      cairo_line_to(pen(), x, -3 + 1.5 * std::sin(6 * turn) + std::sin(11 * turn));
    }
    cairo_line_to(pen(), kFarOut, 1);
    cairo_line_to(pen(), -kFarOut, 1);
    fill({0.45, 0.58, 0.50});
    band(0, 90), fill({0.36, 0.50, 0.28});
    band(4, 2), fill({0.62, 0.61, 0.58});
    band(6, 7), fill({0.32, 0.32, 0.34});
    for (int i = 0; i < 60; ++i) at(6 * i, 9.3, 1, [&] { box(0, 0, 3, 0.35), fill({0.9, 0.9, 0.85}); });
  }

  void house(unsigned number) {
    const double azimuth = -180 + 9.0 * number;
    if (std::abs(azimuth - kLighthouseAt) < 9) return;
    const double width = 6 + 2.5 * chance(number + 100);
    const double height = 6 + 9 * chance(number + 200);
    at(azimuth, kFront, 1, [&] {
      box(0, -height, width, height), fill(kWalls[number % 4]);
      shape({{-0.5, -height}, {width / 2, -height - 2.5}, {width + 0.5, -height}}), fill({0.40, 0.24, 0.20});
      windows(number, static_cast<unsigned>(width / 1.9), static_cast<unsigned>(height / 2.8), height);
    });
  }

  void windows(unsigned house, unsigned columns, unsigned floors, double height) {
    for (unsigned i = 0; i < columns * floors; ++i) {
      constexpr Rgb kDark{0.28, 0.36, 0.45};
      const unsigned floor = i / columns;
      box(0.6 + 1.8 * (i % columns), -height + 0.8 + 2.6 * floor, 1, 1.5);
      chance(house * 64 + i) < 0.45 ? fillByNight({1, 0.82, 0.45}, kDark) : fill(kDark);
    }
  }

  void lighthouse() {
    at(kLighthouseAt, kFront, 1, [&] {
      for (int i = 0; i < 7; ++i) {
        const double low = 2.4 - 0.16 * i;
        const double top = -2.6 * (i + 1);
        shape({{-low, top + 2.6}, {low, top + 2.6}, {low - 0.16, top}, {0.16 - low, top}});
        fill(i % 2 == 0 ? Rgb{0.85, 0.10, 0.10} : Rgb{0.95, 0.95, 0.92});
      }
      box(-0.9, -20, 1.8, 1.8), fillByNight({1, 0.95, 0.6}, {0.6, 0.7, 0.75});
      shape({{-1.3, -20}, {0, -22}, {1.3, -20}}), fill({0.75, 0.10, 0.10});
    });
  }

  void lamp(double azimuth) {
    at(azimuth, 5.5, 1, [&] {
      box(-0.1, -6, 0.2, 6), fill({0.25, 0.27, 0.28});
      disc(0, -6.2, 0.4), fillByNight({1, 0.85, 0.55}, {0.7, 0.7, 0.68});
      if (day_ < 0.5) disc(0, -6.2, 1.6), glow({1, 0.8, 0.45}, 0.18);
    });
  }

  // The LEDs light the middle of what the camera sees.
  void fallOff() {
    const Pattern gradient(cairo_pattern_create_radial(0, -view_.tilt, 4, 0, -view_.tilt, 38));
    cairo_pattern_add_color_stop_rgba(gradient.get(), 0, 0, 0, 0, 0);
    cairo_pattern_add_color_stop_rgba(gradient.get(), 1, 0, 0, 0, 0.85 * (1 - day_));
    cairo_set_source(pen(), gradient.get());
    cairo_paint(pen());
  }

  void car(Rgb paint) {
    shape({{-2, 0}, {-2, -0.8}, {-1.2, -0.9}, {-0.7, -1.6}, {0.7, -1.6}, {1.2, -0.9}, {2, -0.7}, {2, 0}});
    fill(paint);
    disc(-1.2, 0, 0.4), disc(1.2, 0, 0.4), fill({0.1, 0.1, 0.1});
  }

  void bird(double wing) {
    shape({{-1.2, -wing}, {0, 0.25}, {1.2, -wing}, {0, -0.1}}), fill({0.12, 0.12, 0.14});
  }

  Pen pen_;
  const View& view_;
  double day_;
  double shade_;
  double alpha_ = 1;  // of what moves
};

}  // namespace

double daylight(std::int64_t instant) {
  const double hour = hourOf(instant);
  return ramp(hour, 5.5, 7.5) * (1 - ramp(hour, 18, 20));
}

double brightnessOf(const View& view) {
  return std::max(kNight + (1 - kNight) * daylight(view.instant), view.isLit ? kLit : 0);
}

cairo_surface_t* Scene::draw(const View& view) {
  View still = view;
  still.instant -= still.instant % kStillTime;
  still.motion = 0;
  still.exposure = 0;
  if (!background_ || still != still_) {
    if (!background_ || still.width != still_.width || still.height != still_.height) {
      background_ = blank(view);
      withMotion_.reset();
    }
    still_ = still;
    Painter(background_.get(), still_).paintStill();
    cairo_surface_flush(background_.get());
  }
  if (view.motion == 0) return background_.get();
  if (!withMotion_) withMotion_ = blank(view);
  std::memcpy(cairo_image_surface_get_data(withMotion_.get()),
              cairo_image_surface_get_data(background_.get()),
              static_cast<std::size_t>(cairo_image_surface_get_stride(background_.get())) *
                  static_cast<std::size_t>(cairo_image_surface_get_height(background_.get())));
  cairo_surface_mark_dirty(withMotion_.get());
  Painter(withMotion_.get(), view).paintMotion();
  cairo_surface_flush(withMotion_.get());
  return withMotion_.get();
}

}  // namespace camera::picture
