// The image sensor: the display system in use, those that it supports, and its exposure times.
#pragma once

#include <cstddef>
#include <string>

#include "platform/product/display_system.h"

namespace camera {

inline constexpr std::size_t kMostDisplaySystems = 3;  // of a product; more are not reported to clients

// The index in kDisplaySystems; -1 if the record profile cannot be read.
int displaySystemInUse();

// The names of the supported display systems, separated by single spaces: the first three of the product
// information or, if it has none, the one in use. Empty if these cannot be read.
std::string supportedDisplaySystems();

// The exposure times, each a number or "number/number", separated by single spaces. Empty if the product has
// none or the product information cannot be read.
std::string exposureTimes();

}  // namespace camera
