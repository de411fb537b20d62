// The text of the on-screen display.
#pragma once

#include <string>

#include "virtual-camera/picture/frame.h"

namespace camera::picture {

// Writes a line of UTF-8 without control characters on a dark ground at the top left. What does not fit is
// cut off.
void writeCaption(const std::string& text, Frame* frame);

}  // namespace camera::picture
