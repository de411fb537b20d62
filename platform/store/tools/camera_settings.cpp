// camera-settings: the settings store's command line, for people, scripts and factory reset.
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/check/target_check.h"
#include "platform/descriptor.h"
#include "platform/store/owner.h"
#include "platform/store/settings_command.h"

namespace {

// A script that runs this program for a user sets the variable to the words with which the user called it.
std::string calledName() {
  const char* name = std::getenv("CAMERA_CALLED_AS");
  return name == nullptr ? "camera-settings" : name;
}

int check(camera::SettingsStore& store, std::string_view name, std::string* report) {
  const char* path = std::getenv("PATH");
  const bool isAllWell =
      camera::checkTarget(store, {.root = "", .path = path == nullptr ? "" : path, .caller = name}, report);
  return static_cast<int>(isAllWell ? camera::StoreResult::kDone : camera::StoreResult::kRefused);
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string name = calledName();
  camera::actAsOwner(camera::kSettingsFolder);
  camera::ReplaceableStoreFiles files(camera::kSettingsFolder);
  camera::SettingsStore store(files, camera::kRecords);
  camera::CommandStreams streams{.input = STDIN_FILENO, .output = {}, .error = {}};
  const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  int status = 0;
  if (arguments.size() == 1 && arguments[0] == "check")
    status = check(store, name, &streams.output);
  else
    status = camera::runSettingsCommand(store, name, arguments, &streams);
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
