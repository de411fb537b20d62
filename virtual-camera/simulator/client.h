// The other side of the simulator's sockets, for people and scripts inside the camera.
#pragma once

#include <string>
#include <string_view>

namespace camera::simulator {

// Sends the request and reads the whole answer, waiting at most 30 s for each part. Returns 0 or an errno
// value.
int exchange(const char* path, std::string_view request, std::string* answer);

}  // namespace camera::simulator
