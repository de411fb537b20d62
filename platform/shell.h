// Shell commands. They get no variable of the request: their environment is PATH alone. Standard input and
// error are this process's.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace camera {

// Runs the command, with this process's output, and waits for it, however long: it may be in the midst of a
// change of the card. Returns its wait status, or -1 if it cannot be started.
int runShell(const char* command);

// How long a command may take, and how many bytes of its output are read.
struct ReadLimits {
  std::chrono::milliseconds time = std::chrono::seconds(30);
  std::size_t bytes = std::size_t{4} << 20;
};

// Runs the command and passes its output to take, piece by piece: a line with its line feed, or 127 bytes of
// a longer line. NULs are left out, but count towards the 127. At a limit the shell is killed; the log says
// so. Returns the command's wait status, or -1 if it cannot be started.
int readCommand(const char* command, void (*take)(const char* piece, void* context), void* context,
                const ReadLimits& limits = {});

// Escapes the text to stand between single quotes in a command. Cuts it at the first NUL, which no command
// line can hold.
std::string shellQuoted(std::string_view text);

}  // namespace camera
