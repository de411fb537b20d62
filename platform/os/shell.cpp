// Shell commands by system and popen, which hand down what is ignored and cannot wait where SIGCHLD is.
#include "platform/shell.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "platform/default_signal.h"

namespace {

// The pieces are those of fgets with this buffer.
constexpr std::size_t kPieceSize = 128;

FILE* start(const char* command) {
  const camera::DefaultSignal pipe(SIGPIPE);
  return popen(command, "r");
}

// False at the end of the stream.
bool readPiece(FILE* stream, std::array<char, kPieceSize>* piece) {
  std::size_t length = 0;
  int byte = '\0';
  for (std::size_t count = 0; count < kPieceSize - 1 && byte != '\n'; ++count) {
    byte = std::getc(stream);
    if (byte == EOF && count == 0) return false;
    if (byte == EOF) break;
    if (byte != '\0') (*piece)[length++] = static_cast<char>(byte);
  }
  (*piece)[length] = '\0';
  return true;
}

}  // namespace

int runShell(const char* command) {
  const camera::DefaultSignal pipe(SIGPIPE);
  const camera::DefaultSignal child(SIGCHLD);
  return std::system(command);
}

int readCommand(const char* command, void (*take)(const char* piece, void* context), void* context) {
  const camera::DefaultSignal child(SIGCHLD);
  FILE* stream = start(command);
  if (stream == nullptr) return -1;
  std::array<char, kPieceSize> piece;
  while (readPiece(stream, &piece)) take(piece.data(), context);
  return pclose(stream);
}
