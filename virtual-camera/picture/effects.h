// What the sensor makes of the light: tone, colour, sharpness and noise.
#pragma once

#include <cstdint>

#include "virtual-camera/picture/frame.h"
#include "virtual-camera/picture/surface.h"

namespace camera::picture {

struct Tone {
  double exposure = 1;    // factor of all light
  double shadows = 0;     // 0 to 1: how far dark parts are lifted
  double brightness = 0;  // added, in 255ths
  double contrast = 1;    // factor around the middle
  double saturation = 1;  // factor
  double hue = 0;         // turn of all colours, in radians
  double blue = 0;        // tint, added to the colour differences
  double red = 0;
  double sharpness = 0;    // -1 soft, 0 as it is
  double noise = 0;        // deviation, in 255ths
  std::uint32_t seed = 0;  // of the noise
};

// The surface has the frame's stride and rows.
void develop(cairo_surface_t* surface, const Tone& tone, Frame* frame);

}  // namespace camera::picture
