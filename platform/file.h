// Reading files whole.
#pragma once

#include <string>

namespace camera {

// Reads the file into text. Returns 0, or an errno value that the log has with the path, unless it is the
// expected one; text is then empty.
int readFile(const char* path, std::string* text, int expected = 0);

}  // namespace camera
