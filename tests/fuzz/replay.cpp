// Runs every file of the corpus once, where there is no fuzzer.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int /*count*/, char** arguments) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator{arguments[1]}) {
    std::ifstream file{entry.path(), std::ios::binary};
    const std::string bytes{std::istreambuf_iterator<char>{file}, {}};
    std::cerr << entry.path() << "\n";
    if (LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()) == 0)
      ++count;
  }
  std::cerr << count << " inputs\n";
  return count > 0 ? 0 : 1;
}
