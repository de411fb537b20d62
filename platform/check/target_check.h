// What the system of a camera lacks for these programs.
#pragma once

#include <string>
#include <string_view>

#include "platform/store/settings_store.h"

namespace camera {

struct Target {
  std::string root;         // before every path; empty on the camera itself
  std::string_view path;    // the folders in which programs are searched, separated by colons
  std::string_view caller;  // by which the user called camera-settings
};

// Looks at everything that the programs use, as the user that it runs as. Appends a line for each: "ok: ", or
// "wrong: " with what to do. Returns whether nothing is wrong.
bool checkTarget(SettingsStore& store, const Target& target, std::string* report);

}  // namespace camera
