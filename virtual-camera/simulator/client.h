// The client side of the simulator's sockets, for the commands of people and scripts.
#pragma once

#include <string>
#include <string_view>

#include "virtual-camera/simulator/control.h"

namespace camera::simulator {

inline constexpr char kControl[] = "/run/camera/simulator";
// The first character of an answer from the control socket.
inline constexpr char kDone[] = "+";
inline constexpr char kNotDone[] = "-";

// Sends the request and reads the whole answer. Waits at most 30 s for the connection, and for each part of
// the answer. Returns 0 or an errno value.
int exchange(const char* path, std::string_view request, std::string* answer);

// Has the running simulator carry out a command. Returns 0 or an errno value.
int tell(const std::string& command, ControlReply* reply);

}  // namespace camera::simulator
