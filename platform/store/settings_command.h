// The command line of the settings store; --help lists its commands.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/store/settings_store.h"

namespace camera {

struct CommandStreams {
  int input;           // a descriptor; only restore reads it
  std::string output;  // for standard output
  std::string error;   // without a line end
};

// Runs the command that the arguments begin with. The name is how the user called the program, for its usage.
// Returns the exit status: 0 done, 1 refused or unknown, 2 failed.
int runSettingsCommand(SettingsStore& store, std::string_view name,
                       std::span<const std::string_view> arguments, CommandStreams* streams);

}  // namespace camera
