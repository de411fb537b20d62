// Reading files whole.
#pragma once

#include <string>

namespace camera {

// Reads the file into text. Returns 0, or an errno value with text empty. The log has path and reason, unless
// the error is the expected one.
int readFile(const char* path, std::string* text, int expected = 0);

}  // namespace camera
