// The other side of the simulator's sockets: for people and scripts inside the camera.
#pragma once

#include <string>
#include <string_view>

namespace camera::simulator {

// Sends the request and takes all that is answered, whose parts may be 30 s apart. Returns 0 or an errno
// value.
int exchange(const char* path, std::string_view request, std::string* answer);

}  // namespace camera::simulator
