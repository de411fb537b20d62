// camera-settings: the settings store's command line, for people, scripts and factory reset.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
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

// Opens the file of a backup. Readable by others at no time, and nothing that exists is overwritten.
camera::Descriptor newFile(const std::string& path) {
  return camera::Descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
}

int fail(const std::string& name, const std::string& message) {
  const std::string line = name + ": " + message + "\n";
  camera::writeAll(STDERR_FILENO, line.data(), line.size());
  return static_cast<int>(camera::StoreResult::kFailed);
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string name = calledName();
  std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  // By the rights of the caller, who may be root.
  camera::Descriptor backup;
  std::string backupPath;
  if (arguments.size() == 2 && arguments[0] == "backup") {
    backupPath = arguments[1];
    arguments.pop_back();
    backup = newFile(backupPath);
    if (!backup.isOpen()) return fail(name, backupPath + ": " + std::strerror(errno));
  }
  camera::actAsOwner(camera::kSettingsFolder);
  camera::ReplaceableStoreFiles files(camera::kSettingsFolder);
  camera::SettingsStore store(files, camera::kRecords);
  camera::CommandStreams streams{.input = STDIN_FILENO, .output = {}, .error = {}};
  int status = 0;
  if (arguments.size() == 1 && arguments[0] == "check")
    status = check(store, name, &streams.output);
  else
    status = camera::runSettingsCommand(store, name, arguments, &streams);
  const int output = backup.isOpen() ? backup.number() : STDOUT_FILENO;
  if (camera::writeAll(output, streams.output.data(), streams.output.size()) != 0 ||
      (backup.isOpen() && fsync(output) != 0)) {
    streams.error = (backup.isOpen() ? backupPath : "standard output") + " cannot be written";
    status = static_cast<int>(camera::StoreResult::kFailed);
  }
  if (status != 0 && backup.isOpen()) unlink(backupPath.c_str());
  if (!streams.error.empty()) fail(name, streams.error);
  return status;
}
