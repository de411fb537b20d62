// The documentation: its examples, run in order on a new camera, give the replies that it shows.
#include <fnmatch.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

struct Example {
  std::string command;
  std::string reply;  // "..." stands for any text
};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

// An example is a line of code with curl; the lines after it that begin with "# " are its reply.
std::vector<Example> examplesOf(const std::string& text) {
  std::vector<Example> examples;
  bool isFenced = false;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const bool indented = line.starts_with("    ");
    if (indented) line.erase(0, 4);
    if (line.starts_with("```")) isFenced = !isFenced;
    EXPECT_FALSE(isFenced && line.starts_with("## ")) << line << " is inside a code block that is not closed";
    if (!indented && !isFenced) continue;
    if (line.starts_with("# ")) {
      examples.back().reply += line.substr(2) + "\n";
    } else if (line.find("curl ") != line.npos) {
      examples.push_back({line, ""});
    }
  }
  return examples;
}

class Documentation : public testing::TestWithParam<const char*> {
 protected:
  std::string answer(const std::string& command) {
    waitFor(start({"sh", "-c", command}, "/dev/null", folder_.path("out"), "/dev/null"));
    return readFile(folder_.path("out"));
  }
  // Retries, because a move to another port takes a moment and a clock's second may just have passed.
  void expect(const Example& example) {
    const std::string pattern = replaced(example.reply, "...", "*");
    std::string answered;
    EXPECT_TRUE(within(30,
                       [&] {
                         answered = answer(example.command);
                         return fnmatch(pattern.c_str(), answered.c_str(), FNM_NOESCAPE) == 0;
                       }))
        << example.command << "\n"
        << answered;
  }

  TemporaryFolder folder_;
};

TEST_P(Documentation, ShowsWhatTheCameraAnswers) {
  Camera camera;
  camera.boot();
  std::string text = readFile(std::string{CAMERA_SOURCE_DIR "/"} + GetParam());
  text = replaced(text, "8080", std::to_string(camera.factoryPort));
  text = replaced(text, "8081", std::to_string(freePort()));
  const std::vector<Example> examples = examplesOf(text);
  EXPECT_GT(examples.size(), 3);
  for (const Example& example : examples)
    if (!HasFailure()) expect(example);
}

INSTANTIATE_TEST_SUITE_P(Each, Documentation, testing::Values("README.md", "docs/api.md"));

}  // namespace
}  // namespace camera::test
