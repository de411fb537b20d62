// What a card needs that was just formatted.
#pragma once

namespace camera {

// Sleeps for a second, in which the system mounts the card again.
void awaitMount();

// Creates the folder, for everybody. That it cannot be created is no failure: it may be there.
void makeCardFolder(const char* path);

}  // namespace camera
