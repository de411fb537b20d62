// Cairo's pictures and pens, released by their owner.
#pragma once

#include <cairo/cairo.h>

#include <memory>

namespace camera::picture {

struct Release {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* pen) const { cairo_destroy(pen); }
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using Surface = std::unique_ptr<cairo_surface_t, Release>;
using Pen = std::unique_ptr<cairo_t, Release>;
using Pattern = std::unique_ptr<cairo_pattern_t, Release>;

}  // namespace camera::picture
