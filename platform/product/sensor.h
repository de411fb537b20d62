// The image sensor: the display system in use, those that it supports, and its exposure times.
#pragma once

#include <string>

#include "platform/product/display_system.h"

// True, with the index of the display system in use, which is the stored profiles'; false when it cannot be
// read. The second number is 0.
bool sensor_get_status(int& displaySystem, int& reserved);

// The same index, -1 when it cannot be read.
int GetDS();

// The names of the supported display systems, separated by single spaces: those of the product information,
// or else the one in use. Empty when neither can be read.
std::string sensor_get_all_ds();

// The exposure times, each a number or "number/number", separated by single spaces. Empty when the product
// has none or the product information cannot be read.
std::string sensor_get_all_max_exposure_time();
