// What a person tells the simulated camera: `./run sim COMMAND`.
#pragma once

#include <functional>
#include <string>

#include "virtual-camera/simulator/camera_state.h"
#include "virtual-camera/simulator/server.h"

namespace camera::simulator {

// Stands for the sender of the status packages where a command names a daemon.
inline constexpr char kStatusSender[] = "status";

struct ControlReply {
  bool isDone;
  std::string text;  // what was asked for, or why it was not done
};

// What the commands act on.
struct Controlled {
  CameraState& camera;
  Server& server;
  std::function<ControlReply(std::size_t state)> setCard;  // stores the card's state code
};

// Carries one command out, words with spaces between them.
ControlReply control(const Controlled& controlled, const std::string& command);

std::string controlHelp();

}  // namespace camera::simulator
