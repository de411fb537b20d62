// What stands around the camera: a street with houses and a lighthouse, under the sky of the hour.
#pragma once

#include <cstdint>

#include "virtual-camera/picture/surface.h"

namespace camera::picture {

// Angles in degrees. The view is 60 degrees wide.
struct View {
  int width = 640;  // pixels
  int height = 480;
  double aspect = 0.75;  // height by width of what is seen; the pixels need not be square
  double pan = 0;        // to the right
  double tilt = 0;       // up
  bool mirror = false;
  bool flip = false;
  bool isLit = false;        // by the infrared LEDs
  double exposure = 0;       // seconds
  int motion = 0;            // strength; 0: nothing moves
  std::int64_t instant = 0;  // local time in milliseconds since 1970-01-01 00:00

  bool operator==(const View&) const = default;
};

// From 0 by night to 1 by day.
double daylight(std::int64_t instant);
// How bright the street is, from almost 0 to 1.
double brightnessOf(const View& view);

class Scene {
 public:
  // Returns a picture of at least the view's size: both sides are rounded up to multiples of 16 pixels. It is
  // valid until the next call.
  cairo_surface_t* draw(const View& view);

 private:
  View still_;  // what background_ shows
  Surface background_;
  Surface withMotion_;
};

}  // namespace camera::picture
