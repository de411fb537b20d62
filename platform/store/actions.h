// Runs the programs that put changed settings into effect. Endpoints call runActions of settings.h instead,
// which releases the store first.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/store/record.h"

namespace camera {

inline constexpr char kActionsFolder[] = "/usr/lib/camera/actions";

// Where the programs are, and how long to wait for each. One that takes longer is left running.
struct ActionRules {
  std::string folder;
  int waitMilliseconds;
};

// Runs FOLDER/NAME for each record in the set (bit i: record i), in record order, if that is an executable
// file. Returns how many programs were started.
int runActions(std::uint64_t set, std::span<const RecordInfo* const> records, const ActionRules& rules);

}  // namespace camera
