// The camera's debug log.
#pragma once

#include <string_view>

namespace camera {

// Sends the text (at most 1023 bytes) to the system log and returns what it sent of it. If nobody reads the
// log, the text is lost.
std::string_view logDebug(std::string_view text);

// What an errno value means, in English.
const char* errorText(int error);

}  // namespace camera
