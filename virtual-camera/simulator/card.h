// Two weeks of recordings and snapshots for the card.
#pragma once

#include <ctime>
#include <string>

namespace camera::simulator {

// Creates the folder, whose name ends in a slash, and in it a folder YYYYMMDD per day, with recordings
// HHMMSS.avi and snapshots HHMMSS.jpg (UTC). They have the sizes and times of real ones, but are sparse files
// and take almost no space. Returns 0 or an errno value.
int fillCard(const std::string& folder, std::time_t now);

}  // namespace camera::simulator
