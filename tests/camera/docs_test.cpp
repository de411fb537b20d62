// The documentation: its examples, run in order on a new camera, give the replies that it shows. With the
// variable CAMERA_RECORD_EXAMPLES set, the replies of docs/api.md that differ are written into it instead.
#include <fnmatch.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

struct Example {
  std::string command;
  std::string reply;     // "..." stands for any text
  std::size_t line = 0;  // of the command, counted from 1
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
  std::size_t number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    const bool indented = line.starts_with("    ");
    if (indented) line.erase(0, 4);
    if (line.starts_with("```")) isFenced = !isFenced;
    EXPECT_FALSE(isFenced && line.starts_with("## ")) << line << " is inside a code block that is not closed";
    if (!indented && !isFenced) continue;
    if (line.starts_with("# ")) {
      examples.back().reply += line.substr(2) + "\n";
    } else if (line.find("curl ") != line.npos) {
      examples.push_back({line, "", number});
    }
  }
  return examples;
}

// Puts the replies in the place of the lines that begin with "#" after their commands.
std::string recorded(const std::string& text, const std::vector<Example>& examples) {
  std::string result;
  std::istringstream lines(text);
  std::size_t number = 0;
  auto next = examples.begin();
  bool isReply = false;
  for (std::string line; std::getline(lines, line);) {
    isReply = isReply && line.starts_with("# ");
    if (!isReply) result += line + "\n";
    if (next == examples.end() || ++number != next->line) continue;
    std::istringstream reply(next++->reply);
    for (std::string shown; std::getline(reply, shown);) result += "# " + shown + "\n";
    isReply = true;
  }
  return result;
}

class Documentation : public testing::TestWithParam<const char*> {
 protected:
  std::string answer(const std::string& command) {
    waitFor(start({"sh", "-c", command}, "/dev/null", folder_.path("out"), "/dev/null"));
    return readFile(folder_.path("out"));
  }
  // Retries, because a move to another port takes a moment and a clock's second may just have passed.
  void expect(const Example& example) {
    EXPECT_TRUE(within(30, [&] { return matches(example); })) << example.command << "\n" << answered_;
  }
  bool matches(const Example& example) {
    answered_ = answer(example.command);
    return fnmatch(replaced(example.reply, "...", "*").c_str(), answered_.c_str(), FNM_NOESCAPE) == 0;
  }

  TemporaryFolder folder_;
  std::string answered_;  // to the last command
};

TEST_P(Documentation, ShowsWhatTheCameraAnswers) {
  Camera camera;
  camera.boot();
  const std::string path = std::string{CAMERA_SOURCE_DIR "/"} + GetParam();
  const std::string ports[] = {std::to_string(camera.factoryPort), std::to_string(freePort())};
  const std::string text = replaced(replaced(readFile(path), "8080", ports[0]), "8081", ports[1]);
  std::vector<Example> examples = examplesOf(text);
  EXPECT_GT(examples.size(), 3);
  const bool records = path.ends_with("api.md") && std::getenv("CAMERA_RECORD_EXAMPLES") != nullptr;
  for (Example& example : examples) {
    if (records && !matches(example)) example.reply = answered_;
    if (!records && !HasFailure()) expect(example);
  }
  if (records)
    writeFile(path, replaced(replaced(recorded(text, examples), ports[0], "8080"), ports[1], "8081"));
}

INSTANTIATE_TEST_SUITE_P(Each, Documentation, testing::Values("README.md", "docs/api.md"));

}  // namespace
}  // namespace camera::test
