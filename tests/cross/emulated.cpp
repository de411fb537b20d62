// Runs PROGRAM, which is for another processor, in EMULATOR, under the name by which it was called itself.
#include <unistd.h>

#include <vector>

int main(int argc, char** argv) {
  char emulator[] = EMULATOR, underName[] = "-0", program[] = PROGRAM;
  std::vector<char*> words{emulator, underName, argv[0], program};
  words.insert(words.end(), argv + 1, argv + argc + 1);
  execvp(emulator, words.data());
  return 127;
}
