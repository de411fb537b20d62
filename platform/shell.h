// The one place that runs shell commands. They start with SIGPIPE and SIGCHLD at their defaults, whatever
// this process ignores or was handed by the web server.
#pragma once

// Runs the command and waits for it. Returns its wait status, -1 when it could not be started.
int runShell(const char* command);

// Runs the command and hands over what it prints, piece by piece: a line with its line feed, or 127 bytes of
// a longer one. A NUL counts as a byte of its piece and is left out, so that no piece ends early. Returns the
// command's wait status, -1 when it could not be started.
int readCommand(const char* command, void (*take)(const char* piece, void* context), void* context);
