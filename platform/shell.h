// Shell commands. They get no variable of the request: their environment is PATH alone. Standard input and
// error are this process's.
#pragma once

#include <string>
#include <string_view>

namespace camera {

// Runs the command and waits for it. Returns its wait status, -1 if it could not be started.
int runShell(const char* command);

// Runs the command and hands over what it prints, piece by piece: a line with its line feed, or 127 bytes of
// a longer one. A NUL counts as a byte of its piece but is left out. Returns the command's wait status, -1 if
// it could not be started.
int readCommand(const char* command, void (*take)(const char* piece, void* context), void* context);

// The text as it must stand between single quotes in a command. It ends at the first NUL, which no command
// line can hold.
std::string shellQuoted(std::string_view text);

}  // namespace camera
