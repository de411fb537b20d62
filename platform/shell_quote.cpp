// Quoting texts for shell commands.
#include "platform/shell.h"

std::string camera::shellQuoted(std::string_view text) {
  std::string quoted;
  for (const char c : text.substr(0, text.find('\0'))) {
    if (c == '\'') {
      quoted += "'\\''";  // closes the quotes, adds an escaped quote, opens them again
    } else {
      quoted += c;
    }
  }
  return quoted;
}
