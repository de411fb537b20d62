// Programs that a request starts: the records' actions and shell commands; what they inherit, how long they
// are waited for, and in which pieces their output arrives.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "platform/log.h"
#include "platform/shell.h"
#include "platform/store/actions.h"
#include "tests/platform/sample_record.h"
#include "tests/support/temporary_folder.h"

namespace camera::test {
namespace {

class Actions : public testing::Test {
 protected:
  void program(const std::string& name, const std::string& script, unsigned mode = 0700) {
    folder.put(name, "#!/bin/sh\ncd " + folder.path() + "\n" + script + "\n");
    std::filesystem::permissions(folder.path(name), std::filesystem::perms(mode));
  }
  int run(std::uint64_t set, int waitMilliseconds = 10'000) {
    store.hold();
    return runActions(store, set, {folder.path(), waitMilliseconds});
  }
  TemporaryFolder folder;
  PosixStoreFiles files{folder.path()};
  SettingsStore store{files, kSampleRecords};
};

TEST_F(Actions, RunForTheRecordsOfTheSetInRecordOrder) {
  EXPECT_EQ(run(7), 0) << "there is none";
  program("sample", "sleep 0.05; echo sample >> log; exit 3");
  program("whole", "echo whole >> log", 0600);
  program("linked", "flock -n . echo linked >> log");  // as if it changed a setting
  const std::tuple<std::uint64_t, int, const char*> rows[] = {
      {0, 0, ""}, {1, 1, "sample\n"}, {6, 1, "linked\n"}, {7, 2, "sample\nlinked\n"}, {0xF8, 0, ""}};
  for (const auto& [set, started, log] : rows) {
    folder.put("log", "");
    EXPECT_EQ(run(set), started) << set;
    EXPECT_EQ(folder.content("log"), log) << set;
  }
  folder.put("whole",
             "\x7F"
             "ELF, but cut off");
  std::filesystem::permissions(folder.path("whole"), std::filesystem::perms(0700));
  EXPECT_EQ(run(2), 0) << "it cannot be started";
}

TEST_F(Actions, ThatTakeTooLongAreLeftRunning) {
  program("sample", "echo $$ > pid; exec sleep 60");
  program("whole", "echo whole >> log");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(run(3, 300), 2);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
  // On a busy machine the program may not have stored its process id yet.
  for (int i = 0; i < 20'000 && folder.content("pid").empty(); ++i) usleep(1000);
  const pid_t child = std::stoi("0" + folder.content("pid"));
  ASSERT_GT(child, 0);
  EXPECT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "it was not left running";
  EXPECT_EQ(kill(child, SIGKILL), 0);
}

// Exit status 128 + 13 shows that SIGPIPE killed the shell, so it did not inherit that it is ignored. A shell
// may change which signals are blocked, so the other program is cp: it copies its own status over its script.
TEST_F(Actions, StartCleanWhateverTheProgramInherited) {
  program("sample",
          "echo $(readlink /proc/$$/fd/0 /proc/$$/fd/1) ${QUERY_STRING-none} > seen; echo into the reply\nsh "
          "-c 'kill -PIPE $$'; echo $? >> seen");
  program("whole", "");
  folder.put("whole", "#!/bin/cp /proc/self/status\n");
  const auto runFromAWebServer = [this] {
    setenv("QUERY_STRING", "password=x", 1);
    sigset_t mask{};
    sigaddset(&mask, SIGTERM);
    sigprocmask(SIG_BLOCK, &mask, nullptr);
    signal(SIGPIPE, SIG_IGN);
    signal(SIGCHLD, SIG_IGN);
    alarm(9);  // a wait that misses the program's end would take 10 s
    EXPECT_EQ(run(3), 2);
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    EXPECT_TRUE(sigismember(&mask, SIGTERM) == 1 && sigismember(&mask, SIGCHLD) == 0);
    EXPECT_EQ(signal(SIGCHLD, SIG_DFL), SIG_IGN);
    _exit(HasFailure() ? 1 : 0);
  };
  EXPECT_EXIT(runFromAWebServer(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(folder.content("seen"), "/dev/null /dev/null none\n141\n");
  EXPECT_NE(folder.content("whole").find("SigBlk:\t0000000000000000\n"), std::string::npos);
}

TEST(Log, CutsATextAfter1023Bytes) {
  EXPECT_EQ(logDebug(std::string(2000, 'x')), std::string(1023, 'x'));
}

std::vector<std::string> pieces(const char* command, const ReadLimits& limits = {}) {
  std::vector<std::string> all;
  const auto take = [](const char* piece, void* context) {
    static_cast<std::vector<std::string>*>(context)->emplace_back(piece);
  };
  all.push_back("status " + std::to_string(readCommand(command, take, &all, limits)));
  return all;
}

// A command inherits PATH alone. SIGCHLD is ignored, as some web servers hand it down.
TEST(Shell, GetsNothingOfTheRequestAndIsWaitedFor) {
  const auto runFromAWebServer = [] {
    signal(SIGCHLD, SIG_IGN);
    setenv("QUERY_STRING", "password=x", 1);
    setenv("PATH", "/usr/bin:/bin:/of-the-server", 1);
    EXPECT_EQ(runShell("test ${QUERY_STRING-none} = none && exit 3"), 3 << 8);
    EXPECT_EQ(pieces("echo ${QUERY_STRING-none} $PATH; exit 4"),
              (std::vector<std::string>{"none /usr/bin:/bin:/of-the-server\n", "status 1024"}));
    EXPECT_EQ(signal(SIGCHLD, SIG_DFL), SIG_IGN);
    _exit(HasFailure() ? 1 : 0);
  };
  EXPECT_EXIT(runFromAWebServer(), testing::ExitedWithCode(0), "");
}

TEST(Shell, GivesLinesAndPiecesOfLongerOnes) {
  const std::string full(127, '0');
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"printf 'one\\n\\ntwo\\r\\nlast'", {"one\n", "\n", "two\r\n", "last", "status 0"}},
      {"printf '%0300d\\n' 0", {full, full, std::string(46, '0') + "\n", "status 0"}},
      {"printf '%0127d\\n' 0", {full, "\n", "status 0"}},
      {"printf 'a\\000b\\n%0126d\\000c\\n' 0", {"ab\n", full.substr(1), "c\n", "status 0"}}};
  for (const auto& [command, expected] : rows) EXPECT_EQ(pieces(command), expected) << command;
}

// Status 9: the shell was killed.
TEST(Shell, IsKilledIfItsOutputDoesNotEnd) {
  constexpr ReadLimits kShort{.time = std::chrono::milliseconds(500), .bytes = 10};
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"printf 'one\n'; exec sleep 60", {"one\n", "status 9"}},
      {"printf one; exec sleep 60 >/dev/null", {"one", "status 9"}},
      {"printf '123456789'", {"123456789", "status 0"}},
      {"exec yes one", {"one\n", "one\n", "on", "status 9"}}};
  for (const auto& [command, expected] : rows) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(pieces(command, kShort), expected) << command;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10)) << command;
  }
}

}  // namespace
}  // namespace camera::test
