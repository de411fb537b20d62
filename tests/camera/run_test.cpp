// ./run from the outside: what it starts, what it refuses, and what it leaves behind.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

class Run : public testing::Test {
 protected:
  static constexpr char kName[] = "/cgi-bin/httpport.cgi";

  pid_t startRun(const Command& options) {
    Command command{CAMERA_SOURCE_DIR "/run", "--state", folder_.path("state")};
    command.insert(command.end(), options.begin(), options.end());
    return start(command, "/dev/null", folder_.path("out"), folder_.path("err"));
  }
  void expectRefusal(const Command& options, const std::string& complaint) {
    EXPECT_EQ(waitFor(startRun(options)), 1) << options.back();
    const std::string line = readFile(folder_.path("err"));
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    EXPECT_NE(line.find(complaint), std::string::npos) << options.back() << ": " << line;
  }
  static bool answers(int port) { return fetch(port, kName).status == 200; }

  TemporaryFolder folder_;
};

TEST_F(Run, StartsOnceAndEndsWithEverythingItStarted) {
  const int port = freePort();
  const pid_t run = startRun({"--port", std::to_string(port)});
  const std::string url = "127.0.0.1:" + std::to_string(port) + kName;
  ASSERT_TRUE(within(60, [&] { return answers(port); })) << readFile(folder_.path("err"));
  EXPECT_TRUE(within(2, [&] { return readFile(folder_.path("out")).find(url) != std::string::npos; }));
  EXPECT_GT(processesOf(folder_), 2);
  expectRefusal({"--port", std::to_string(freePort())}, "another camera");

  const int moved = freePort();
  ASSERT_EQ(fetch(port, std::string{kName} + "?httpport=" + std::to_string(moved)).status, 200);
  ASSERT_TRUE(within(2, [&] { return answers(moved); }));
  kill(run, SIGINT);
  EXPECT_EQ(waitFor(run), 0);
  EXPECT_EQ(processesOf(folder_), 0);

  const pid_t again = startRun({});
  EXPECT_TRUE(within(20, [&] { return answers(moved); })) << readFile(folder_.path("err"));
  kill(again, SIGKILL);
  waitFor(again);
  EXPECT_TRUE(within(5, [&] { return processesOf(folder_) == 0; }));
}

TEST_F(Run, RefusesInOneLine) {
  int taken = 0;
  const int listener = listenSomewhere(&taken);
  const std::pair<Command, std::string> rows[] = {
      {{"--port", std::to_string(taken)}, "taken by camera_test (process " + std::to_string(getpid()) + ")"},
      {{"--port", "80a"}, "\"80a\" is not a port"},
      {{"--port", "65536"}, "\"65536\" is not a port"},
      {{"--port"}, "--port needs a value"},
      {{"--product", "toaster"}, "no product \"toaster\"; there are: basic full"},
      {{"--colour", "red"}, "unknown option --colour"}};
  for (const auto& [options, complaint] : rows) expectRefusal(options, complaint);
  close(listener);
}

}  // namespace
}  // namespace camera::test
