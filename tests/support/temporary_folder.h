// A folder for one test, removed at its end.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace camera::test {

inline std::string readFile(const std::filesystem::path& path) {
  return (std::ostringstream() << std::ifstream(path, std::ios::binary).rdbuf()).str();
}

inline void writeFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

class TemporaryFolder {
 public:
  TemporaryFolder() {
    if (mkdtemp(path_.data()) == nullptr) std::abort();
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_, ignored_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // The path of a file in the folder, or of the folder.
  std::string path(const std::string& name = "") const { return name.empty() ? path_ : path_ + "/" + name; }
  void put(const std::string& name, const std::string& content) const { writeFile(path(name), content); }
  std::string content(const std::string& name) const { return readFile(path(name)); }

 private:
  std::string path_ = testing::TempDir() + "camera-test-XXXXXX";
  std::error_code ignored_;
};

}  // namespace camera::test
