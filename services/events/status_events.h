// What a status package says, as server-sent events.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/daemons/status_receiver.h"

namespace camera::events {

struct StatusEvent {
  std::string_view kind;  // a key of notify.cgi, without its number
  int number;             // of that key; 0 without one
  std::int32_t value;     // an amount, a level or a state: 0 off, 1 on
};

// Returns one event for most packages, several for one that reports several things, none for a package that
// notify.cgi ignores.
std::vector<StatusEvent> eventsOf(const StatusPackage& package);

// Writes milliseconds since 1970 as 2026-11-26T12:34:56.789.
std::string timeText(std::int64_t milliseconds);

// The event as the stream has it, with the empty line at its end.
std::string streamText(std::uint64_t id, std::string_view time, const StatusEvent& event);

}  // namespace camera::events
