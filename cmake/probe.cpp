// Uses what framework/memory.cpp and framework/runtime.cpp replace, to see whether they suit the libraries.
#include <dirent.h>

#include <cstdlib>
#include <map>
#include <string>

int main(int argc, char** argv) {
  std::map<std::string, std::string> texts;
  for (int i = 0; i < 1000; ++i) texts[std::to_string(i)].assign(static_cast<std::size_t>(i), 'x');
  DIR* folder = opendir("/");
  if (folder == nullptr || readdir(folder) == nullptr || closedir(folder) != 0) return 1;
  auto* numbers = static_cast<int*>(std::calloc(1000, sizeof(int)));
  numbers = static_cast<int*>(std::realloc(numbers, 2000 * sizeof(int)));
  const bool isRight = numbers[999] == 0 && texts.at(argv[argc - 1] == nullptr ? "" : "999").size() == 999;
  std::free(numbers);
  return isRight ? 0 : 1;
}
