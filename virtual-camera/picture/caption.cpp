// The text of the on-screen display. The font is read from its file: looking for one takes longer than the
// picture.
#include "virtual-camera/picture/caption.h"

#include <cairo/cairo-ft.h>

#include <algorithm>
#include <cmath>

#include "virtual-camera/picture/surface.h"

namespace camera::picture {
namespace {

constexpr char kFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";
constexpr int kSmallest = 8;  // pixels
constexpr int kLinesPerPicture = 28;
constexpr int kWhite = 235;

// Null if the font is missing. It lives as long as the process.
cairo_font_face_t* font() {
  static cairo_font_face_t* const font = []() -> cairo_font_face_t* {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    if (FT_Init_FreeType(&library) != 0 || FT_New_Face(library, kFont, 0, &face) != 0) return nullptr;
    return cairo_ft_font_face_create_for_ft_face(face, 0);
  }();
  return font;
}

}  // namespace

void writeCaption(const std::string& text, Frame* frame) {
  if (text.empty() || font() == nullptr) return;
  const int size = std::max(kSmallest, frame->height / kLinesPerPicture);
  const int height = std::min(size * 3 / 2, frame->height);
  const Surface strip(cairo_image_surface_create(CAIRO_FORMAT_A8, frame->width, height));
  const Pen pen(cairo_create(strip.get()));
  cairo_set_font_face(pen.get(), font());
  cairo_set_font_size(pen.get(), size);
  cairo_text_extents_t extents;
  cairo_text_extents(pen.get(), text.c_str(), &extents);
  cairo_move_to(pen.get(), size / 2.0, size * 1.1);
  cairo_show_text(pen.get(), text.c_str());
  cairo_surface_flush(strip.get());
  const int width = std::min(static_cast<int>(std::ceil(extents.x_advance)) + size, frame->width);
  const std::uint8_t* alpha = cairo_image_surface_get_data(strip.get());
  for (int r = 0; r < height; ++r, alpha += cairo_image_surface_get_stride(strip.get())) {
    std::uint8_t* const y = frame->row(r);
    for (int x = 0; x < width; ++x)
      y[x] = static_cast<std::uint8_t>((kWhite * alpha[x] + y[x] / 4 * (255 - alpha[x])) / 255);
    std::fill_n(frame->colorRow(frame->cb, r / 2), width / 2, Frame::kNoColor);
    std::fill_n(frame->colorRow(frame->cr, r / 2), width / 2, Frame::kNoColor);
  }
}

}  // namespace camera::picture
