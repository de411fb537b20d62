// The channels to the daemons over real sockets: every command ends in time and leaves nothing open, whatever
// the daemon does; and which status packages arrive.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <future>
#include <thread>

#include "platform/daemons/daemon_client.h"
#include "tests/support/own_network.h"
#include "tests/support/status_sender.h"
#include "tests/support/temporary_folder.h"

namespace camera::test {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

std::ptrdiff_t openDescriptors() {
  const std::filesystem::directory_iterator all{"/proc/self/fd"};
  return std::distance(begin(all), end(all));
}

int listenAt(const std::string& path, int backlog) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(listen(listener, backlog), 0);
  return listener;
}

// What a daemon does with one connection.
struct Behaviour {
  const char* what;
  bool reads;                        // false: leaves the request unread
  std::vector<std::string> answers;  // with a pause of 400 ms between them
  bool closes;
  std::string reply;  // zero bytes follow; empty: the command fails
};

// Serves one connection. Returns the request; empty if it did not look at it.
std::string serveOnce(int listener, const Behaviour& behaviour, std::future<void> end) {
  const int connection = accept(listener, nullptr, nullptr);
  std::string request;
  if (behaviour.reads || !behaviour.answers.empty()) {
    request.resize(12);
    EXPECT_EQ(recv(connection, request.data(), 12, MSG_WAITALL | (behaviour.reads ? 0 : MSG_PEEK)), 12);
  }
  for (const std::string& answer : behaviour.answers) {
    if (&answer != behaviour.answers.data()) std::this_thread::sleep_for(milliseconds(400));
    for (std::size_t sent = 0; sent < answer.size();) {
      const ssize_t count = send(connection, answer.data() + sent, answer.size() - sent, MSG_NOSIGNAL);
      if (count < 0) break;
      sent += static_cast<std::size_t>(count);
    }
  }
  if (!behaviour.closes) end.wait();
  close(connection);
  return request;
}

TEST(DaemonClient, EndsInTimeWhateverADaemonDoes) {
  std::signal(SIGPIPE, SIG_DFL);
  const std::string whole(140, 'w');
  const Behaviour rows[] = {
      {"answers", true, {whole}, false, whole},
      {"answers in pieces", true, {whole.substr(0, 3), whole.substr(3)}, false, whole},
      {"answers short", true, {"1234567"}, true, "1234567"},
      {"answers without reading", false, {"1234567"}, true, "1234567"},
      {"answers 10 MB", true, {std::string(10'000'000, 'w')}, true, whole},
      {"closes at once", false, {}, true, ""},
      {"closes without an answer", true, {}, true, ""},
      {"never answers", true, {}, false, ""},
      {"never ends its answer", true, {"1", "2", "3", "4"}, false, ""},
  };
  const TemporaryFolder folder;
  const std::ptrdiff_t before = openDescriptors();
  std::vector<std::future<void>> tries;
  for (const Behaviour& row : rows) {
    tries.push_back(std::async(std::launch::async, [&row, &folder] {
      const std::string path = folder.path(row.what);
      const Descriptor listener(listenAt(path, 1));
      std::promise<void> end;
      auto daemon = std::async(std::launch::async, serveOnce, listener.number(), row, end.get_future());
      std::string reply(140, 'x');
      const auto start = Clock::now();
      DaemonClient client{milliseconds(1000)};
      EXPECT_EQ(client.ask(path.c_str(), "rstuvwxyzabc", 12, reply.data(), 140), !row.reply.empty())
          << row.what;
      const std::string expected = row.reply + std::string(140 - row.reply.size(), '\0');
      EXPECT_TRUE(row.reply.empty() || reply == expected) << row.what << ": " << reply;
      EXPECT_LT(Clock::now() - start, milliseconds(2000)) << row.what;
      end.set_value();
      EXPECT_EQ(daemon.get(), row.reads || !row.reply.empty() ? "rstuvwxyzabc" : "") << row.what;
    }));
  }
  tries.clear();
  EXPECT_EQ(openDescriptors(), before);
}

// The second command has the time that is left; the pause between the two counts.
TEST(DaemonClient, CountsItsTimeFromTheFirstCommand) {
  const TemporaryFolder folder;
  const Descriptor listener(listenAt(folder.path("silent"), 2));
  DaemonClient client{milliseconds(600)};
  char reply = '\0';
  EXPECT_FALSE(client.ask(folder.path("missing").c_str(), "x", 1, &reply, 1));
  std::this_thread::sleep_for(milliseconds(400));
  const auto start = Clock::now();
  EXPECT_FALSE(client.ask(folder.path("silent").c_str(), "x", 1, &reply, 1));
  EXPECT_GE(Clock::now() - start, milliseconds(100));
  EXPECT_LT(Clock::now() - start, milliseconds(500));
}

TEST(DaemonClient, ReachesOnlyWhoListens) {
  const TemporaryFolder folder;
  const std::ptrdiff_t before = openDescriptors();
  close(listenAt(folder.path("gone"), 1));
  folder.put("file", "");
  for (const std::string& path : {folder.path("gone"), folder.path("file"), folder.path("missing"),
                                  folder.path(std::string(200, 'x')), std::string{}})
    EXPECT_FALSE(connectToDaemon(path.c_str(), milliseconds(1000)).isOpen()) << path;
  {
    const Descriptor listener(listenAt(folder.path("busy"), 0));
    EXPECT_FALSE(connectToDaemon(folder.path("busy").c_str(), milliseconds(0)).isOpen()) << "no time is left";
    const Descriptor first = connectToDaemon(folder.path("busy").c_str(), milliseconds(500));
    EXPECT_TRUE(first.isOpen());
    const auto start = Clock::now();
    EXPECT_FALSE(connectToDaemon(folder.path("busy").c_str(), milliseconds(500)).isOpen());
    EXPECT_EQ(errno, ETIMEDOUT) << "it accepts nobody";
    EXPECT_GE(Clock::now() - start, milliseconds(500));
  }
  EXPECT_EQ(openDescriptors(), before);
}

constexpr std::uint32_t kAny = 0xFFFFFFFF;
constexpr milliseconds kSecond{1000};

TEST(StatusReceiver, TakesWholePackagesOfThisMachineThatMatch) {
  expectInOwnNetwork([] {
    StatusReceiver receiver;
    StatusReceiver other;
    receiver.open();
    other.open();
    const Sender local;
    const std::string large(65'507, '\xFF');
    for (const std::size_t size : std::initializer_list<std::size_t>{0, 95, 97, large.size()})
      local.send(large.data(), size);
    local.send(large.data(), 96, "127.0.0.1");
    Sender{"10.1.2.3"}.send(package(0x1, 1));
    local.send(package(0x2, 2));
    local.send(package(0x800001, 3));
    local.send(large.data(), 96);

    StatusPackage taken{};
    EXPECT_TRUE(receiver.wait(0x1, &taken, kSecond));
    EXPECT_EQ(taken.event, 0x800001U);
    EXPECT_EQ(taken.value, 3);
    EXPECT_TRUE(receiver.wait(0x800000, &taken, kSecond));
    EXPECT_EQ(taken.event, kAny);
    EXPECT_EQ(taken.value, -1);
    taken = package(7);
    EXPECT_FALSE(receiver.wait(kAny, &taken, milliseconds(50)));
    EXPECT_EQ(taken.event, 7U);
    EXPECT_TRUE(other.wait(kAny, &taken, kSecond)) << "each receiver has its own";
    EXPECT_EQ(taken.value, 2);
    for (int i = 0; i < 100; ++i) local.send(package(0x4, i));
    for (int i = 0; i < 100 && receiver.wait(0x4, &taken, kSecond); ++i) EXPECT_EQ(taken.value, i);
    EXPECT_EQ(taken.value, 99);
  });
}

TEST(StatusReceiver, AFloodFromElsewhereHidesNothing) {
  expectInOwnNetwork([] {
    StatusReceiver receiver;
    receiver.open();
    const Sender foreign{"10.1.2.3"};
    for (int i = 0; i < 20'000; ++i) foreign.send(package(0x1, 1));
    Sender{}.send(package(0x1, 2));
    StatusPackage taken{};
    EXPECT_TRUE(receiver.wait(0x1, &taken, kSecond));
    EXPECT_EQ(taken.value, 2);
  });
}

}  // namespace
}  // namespace camera::test
