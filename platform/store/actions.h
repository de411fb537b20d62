// Runs the programs that put changed settings into effect. Endpoints call runActions of settings.h instead.
#pragma once

#include <cstdint>
#include <string>

#include "platform/store/settings_store.h"

namespace camera {

inline constexpr char kActionsFolder[] = "/usr/lib/camera/actions";

// Where the programs are, and how long to wait for each. One that takes longer is left running.
struct ActionRules {
  std::string folder;
  int waitMilliseconds;
};

// Runs FOLDER/NAME for each record in the set (bit i: record i), in record order, if that is an executable
// file. Releases the store first, because a program may change settings. Returns how many programs were
// started.
int runActions(SettingsStore& store, std::uint64_t set, const ActionRules& rules);

}  // namespace camera
