// A picture as luminance and colour differences, at half resolution.
#pragma once

#include <cstdint>
#include <vector>

namespace camera::picture {

struct Frame {
  Frame(int shownWidth, int shownHeight)
      : width(shownWidth),
        height(shownHeight),
        stride((shownWidth + 15) / 16 * 16),
        rows((shownHeight + 15) / 16 * 16),
        y(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows)),
        cb(y.size() / 4, kNoColor),
        cr(y.size() / 4, kNoColor) {}

  static constexpr std::uint8_t kNoColor = 128;

  std::uint8_t* row(int number) {
    return &y[static_cast<std::size_t>(number) * static_cast<std::size_t>(stride)];
  }
  std::uint8_t* colorRow(std::vector<std::uint8_t>& plane, int number) const {
    return &plane[static_cast<std::size_t>(number) * static_cast<std::size_t>(stride / 2)];
  }

  int width;  // pixels that are shown
  int height;
  int stride;  // both as the planes hold them: multiples of 16
  int rows;
  std::vector<std::uint8_t> y, cb, cr;
};

}  // namespace camera::picture
