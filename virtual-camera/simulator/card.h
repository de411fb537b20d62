// What a camera has recorded after two weeks: a card's worth of files to browse.
#pragma once

#include <ctime>
#include <string>

namespace camera::simulator {

// Makes the folder, whose name ends in a slash, and in it a folder YYYYMMDD for each of the last days, with
// recordings HHMMSS.avi and snapshots HHMMSS.jpg (UTC). They have the sizes and times of real ones and take
// next to no space. Returns 0 or an errno value.
int fillCard(const std::string& folder, std::time_t now);

}  // namespace camera::simulator
