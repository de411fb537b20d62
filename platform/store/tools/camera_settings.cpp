// camera-settings: the settings store's command line, for people, scripts and factory reset.
#include <unistd.h>

#include <string_view>
#include <vector>

#include "platform/descriptor.h"
#include "platform/store/settings_command.h"

int main(int argc, char* argv[]) {
  camera::PosixStoreFiles files(camera::kSettingsFolder);
  camera::SettingsStore store(files, camera::kRecords);
  camera::CommandStreams streams{.input = STDIN_FILENO, .output = {}, .error = {}};
  const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  int status = camera::runSettingsCommand(store, arguments, &streams);
  if (camera::writeAll(STDOUT_FILENO, streams.output.data(), streams.output.size()) != 0) {
    streams.error = "standard output cannot be written";
    status = static_cast<int>(camera::StoreResult::kFailed);
  }
  if (!streams.error.empty()) {
    streams.error = "camera-settings: " + streams.error + "\n";
    camera::writeAll(STDERR_FILENO, streams.error.data(), streams.error.size());
  }
  return status;
}
