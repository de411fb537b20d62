// The camera's debug log.
#pragma once

#include <string>

namespace camera {

// Formats printf-style (at most 1023 bytes), sends the text to the system log and returns it. If nobody reads
// the log, the text is lost.
[[gnu::format(printf, 1, 2)]] std::string logDebug(const char* format, ...);

}  // namespace camera
