// The commands of `./run sim`.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "virtual-camera/simulator/camera_state.h"
#include "virtual-camera/simulator/server.h"

namespace camera::simulator {

// The name of the package sender in the command "daemon".
inline constexpr char kStatusSender[] = "status";

// The command that answers with a JSON array of those that make something happen to this product: for each
// its "name", its "usage" and its "help".
inline constexpr char kListCommands[] = "commands";

struct ControlReply {
  bool isDone;
  std::string text;  // the answer, or why the command failed
};

// What the commands read and change.
struct Controlled {
  CameraState& camera;
  Server& server;
  std::function<ControlReply(std::size_t state)> setCard;  // stores the card's state code
};

// Carries out one command: words, separated by spaces.
ControlReply control(const Controlled& controlled, const std::string& command);

std::string_view controlHelp();

}  // namespace camera::simulator
