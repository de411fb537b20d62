// The names of the display systems: the largest picture of each, and what tells two of one size apart.
#include "platform/product/display_system.h"

const char* const DisplaySystem[kDisplaySystemCount] = {
    "VGA", "SXGA", "NTSC", "PAL", "PAL-25", "XGA", "VGA-25", "720p", "960p", "1080p", "WXGA",
};
