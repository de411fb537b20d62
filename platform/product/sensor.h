// The image sensor: the display system in use, those that it supports, and its exposure times.
#pragma once

#include <string>

#include "platform/product/display_system.h"

namespace camera {

// The index that the record of the profiles stores; -1 if it cannot be read.
int displaySystemInUse();

// The names of the supported display systems, separated by single spaces: the first three of the product
// information; without any, the one in use. Empty if neither can be read.
std::string supportedDisplaySystems();

// The exposure times, each a number or "number/number", separated by single spaces. Empty if the product has
// none or the product information cannot be read.
std::string exposureTimes();

}  // namespace camera
