// The names of the display systems: the standard, and the size of the largest picture. A display system
// decides which resolutions and frame rates there are.
#pragma once

namespace camera {

// By index, which the record profile stores.
inline constexpr const char* kDisplaySystems[] = {
    "VGA-640x480-60Hz", "SXGA-1280x1024",   "NTSC-704x480",     "PAL-704x576",
    "PAL-704x576-25",   "XGA-1024x768",     "VGA-640x480-50Hz", "HD-1280x720",
    "QuadVGA-1280x960", "FullHD-1920x1080", "WXGA-1280x800",
};

}  // namespace camera
