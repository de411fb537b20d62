// The commands that the digital I/O daemon and the event daemon take.
#pragma once

#include <cstdint>

#include "platform/daemons/daemon_client.h"

namespace camera {

// Lines in and lines out, each, for which the I/O daemon has commands.
inline constexpr int kMostLines = 4;

// The I/O daemon's commands for the first line; those for the next follow.
inline constexpr std::int32_t kSwitchOutputOn = 606;
inline constexpr std::int32_t kReadInput = 615;
inline constexpr std::int32_t kReadOutput = 620;
inline constexpr std::int32_t kSwitchOutputOff = 624;

// The event daemon's command: the software input, with 0 fired, with 1 released.
inline constexpr std::int32_t kSoftwareInput = 9;

struct DaemonAnswer {
  std::int32_t result;  // 0: done
  std::int32_t state;   // of a line: 1 on
};

// False, and the answer untouched, when the daemon cannot be reached or gives no answer.
bool askDaemon(DaemonClient& client, const char* daemon, std::int32_t code, std::int32_t argument,
               DaemonAnswer* answer);

}  // namespace camera
