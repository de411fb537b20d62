// Compresses a frame.
#pragma once

#include <string>

#include "virtual-camera/picture/frame.h"

namespace camera::picture {

// quality: 0 to 100. The frame is not changed.
std::string toJpeg(Frame& frame, int quality);

}  // namespace camera::picture
