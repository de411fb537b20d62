// The camera's debug log.
#pragma once

#include <string>

namespace camera {

// Formats printf-style (at most 1023 bytes) and sends the text to the system log. If nobody reads the log,
// the text is lost. Returns the formatted text.
[[gnu::format(printf, 1, 2)]] std::string logDebug(const char* format, ...);

}  // namespace camera
