// ./run from the outside: what it starts, what it refuses, and what it leaves behind.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

class Run : public testing::Test {
 protected:
  static constexpr char kName[] = "/cgi-bin/httpport.cgi";

  pid_t startRun(const Command& options) {
    Command command{CAMERA_SOURCE_DIR "/run", "--state", folder_ / "state"};
    command.insert(command.end(), options.begin(), options.end());
    return start(command, "/dev/null", folder_ / "out", folder_ / "err");
  }
  // Expects one line of complaint, which it returns, and failure.
  std::string refusal(const Command& options) {
    EXPECT_EQ(waitFor(startRun(options)), 1);
    std::string line = readFile(folder_ / "err");
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    return line;
  }
  static bool answers(int port) { return fetch(port, kName).status == 200; }

  TemporaryFolder folder_;
};

TEST_F(Run, StartsOnceAndEndsWithEverythingItStarted) {
  const int port = freePort();
  const std::string text = std::to_string(port);
  const pid_t run = startRun({"--port", text});
  ASSERT_TRUE(within(60, [&] { return answers(port); })) << readFile(folder_ / "err");
  EXPECT_TRUE(within(
      2, [&] { return readFile(folder_ / "out").find("127.0.0.1:" + text + kName) != std::string::npos; }));
  EXPECT_GT(folder_.processes(), 2);
  EXPECT_NE(refusal({"--port", std::to_string(freePort())}).find("another camera"), std::string::npos);

  const int moved = freePort();
  ASSERT_EQ(fetch(port, std::string{kName} + "?httpport=" + std::to_string(moved)).status, 200);
  ASSERT_TRUE(within(2, [&] { return answers(moved); }));
  kill(run, SIGINT);
  EXPECT_EQ(waitFor(run), 0);
  EXPECT_EQ(folder_.processes(), 0);
  EXPECT_FALSE(answers(moved));

  const pid_t again = startRun({});
  EXPECT_TRUE(within(20, [&] { return answers(moved); })) << readFile(folder_ / "err");
  kill(again, SIGKILL);
  waitFor(again);
  EXPECT_TRUE(within(5, [&] { return folder_.processes() == 0; }));
}

TEST_F(Run, RefusesInOneLine) {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(freePort()));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(listener, 8), 0);
  const std::string taken = std::to_string(ntohs(address.sin_port));

  struct Row {
    Command options;
    std::string says;
  };
  const Row rows[] = {{{"--port", taken}, "taken by camera_test (process " + std::to_string(getpid()) + ")"},
                      {{"--port", "80a"}, "\"80a\" is not a port"},
                      {{"--port", "0"}, "\"0\" is not a port"},
                      {{"--port", "65536"}, "\"65536\" is not a port"},
                      {{"--port"}, "--port needs a value"},
                      {{"--product", "toaster"}, "no product \"toaster\"; there are: basic full"},
                      {{"--colour", "red"}, "unknown option --colour"}};
  for (const Row& row : rows) {
    const std::string line = refusal(row.options);
    EXPECT_NE(line.find(row.says), std::string::npos) << row.options.back() << ": " << line;
  }
  close(listener);
}

}  // namespace
}  // namespace camera::test
