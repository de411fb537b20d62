// camera-settings: the settings store's command line, for people, scripts and factory reset.
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/descriptor.h"
#include "platform/store/settings_command.h"

namespace {

// A script that runs this program for a user sets the variable to the words with which the user called it.
std::string calledName() {
  const char* name = std::getenv("CAMERA_CALLED_AS");
  return name == nullptr ? "camera-settings" : name;
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string name = calledName();
  camera::ReplaceableStoreFiles files(camera::kSettingsFolder);
  camera::SettingsStore store(files, camera::kRecords);
  camera::CommandStreams streams{.input = STDIN_FILENO, .output = {}, .error = {}};
  const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  int status = camera::runSettingsCommand(store, name, arguments, &streams);
  if (camera::writeAll(STDOUT_FILENO, streams.output.data(), streams.output.size()) != 0) {
    streams.error = "standard output cannot be written";
    status = static_cast<int>(camera::StoreResult::kFailed);
  }
  if (!streams.error.empty()) {
    streams.error = name + ": " + streams.error + "\n";
    camera::writeAll(STDERR_FILENO, streams.error.data(), streams.error.size());
  }
  return status;
}
