// The client side of the simulator's sockets, for the commands of people and scripts.
#pragma once

#include <string>
#include <string_view>

namespace camera::simulator {

// Sends the request and reads the whole answer. Waits at most 30 s for the connection, and for each part of
// the answer. Returns 0 or an errno value.
int exchange(const char* path, std::string_view request, std::string* answer);

}  // namespace camera::simulator
