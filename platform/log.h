// The camera's debug log.
#pragma once

#include <string>

// Formats printf-style (at most 1023 bytes) and hands the text to the system log. A log that nobody reads is
// no failure. Returns the formatted text.
[[gnu::format(printf, 1, 2)]] std::string logDebug(const char* format, ...);
