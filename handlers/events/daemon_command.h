// Commands to the digital I/O daemon and the event daemon.
#pragma once

#include <cstdint>

#include "platform/daemons/daemon_client.h"

namespace camera {

// A line is a digital input or output. The I/O daemon has commands for this many of each.
inline constexpr int kMostLines = 4;

// The I/O daemon's commands for the first line; the next lines have the next numbers.
inline constexpr std::int32_t kSwitchOutputOn = 606;
inline constexpr std::int32_t kReadInput = 615;
inline constexpr std::int32_t kReadOutput = 620;
inline constexpr std::int32_t kSwitchOutputOff = 624;

// The event daemon's command for the software input: argument 0 fires it, 1 releases it.
inline constexpr std::int32_t kSoftwareInput = 9;

struct DaemonAnswer {
  std::int32_t result;  // 0: done
  std::int32_t state;   // of a line: 1 on
};

// False, with the answer unchanged, if the daemon cannot be reached or does not answer.
bool askDaemon(DaemonClient& client, const char* daemon, std::int32_t code, std::int32_t argument,
               DaemonAnswer* answer);

}  // namespace camera
