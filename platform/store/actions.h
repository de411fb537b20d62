// Runs the programs that bring a change of settings into effect.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/store/record.h"

namespace camera {

// Where the programs lie, and how long each is waited for; one that takes longer is left running.
struct ActionRules {
  std::string folder;
  int waitMilliseconds;
};

// Runs FOLDER/NAME for each record in the set, in record order, where that is an executable file. Programs
// get an environment without the request. Returns the number of programs that were started.
int runActions(std::uint64_t set, std::span<const RecordInfo* const> records, const ActionRules& rules);

}  // namespace camera
