// A folder of a test's own, gone with the test.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace camera::test {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string path = testing::TempDir() + "camera-XXXXXX";
    if (mkdtemp(path.data()) == nullptr) std::abort();
    path_ = path;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string file(const std::string& name) const { return path_ + "/" + name; }

  void put(const std::string& name, const std::string& content) const {
    std::ofstream(file(name), std::ios::binary) << content;
  }
  std::string content(const std::string& name) const {
    std::ifstream stream(file(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

 private:
  std::string path_;
};

}  // namespace camera::test
