// Action programs: which run, in what order, in what surroundings, and how long they are waited for.
#include "platform/store/actions.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "platform/log.h"
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
    return runActions(set, kSampleRecords, {folder.path(), waitMilliseconds});
  }
  TemporaryFolder folder;
};

TEST_F(Actions, RunForTheRecordsOfTheSetInRecordOrder) {
  EXPECT_EQ(run(7), 0) << "there is none";
  program("sample", "sleep 0.05; echo sample >> log; exit 3");
  program("whole", "echo whole >> log", 0600);
  program("linked", "echo linked >> log");
  const std::tuple<std::uint64_t, int, const char*> rows[] = {
      {0, 0, ""}, {1, 1, "sample\n"}, {6, 1, "linked\n"}, {7, 2, "sample\nlinked\n"}, {0xF8, 0, ""}};
  for (const auto& [set, started, log] : rows) {
    folder.put("log", "");
    EXPECT_EQ(run(set), started) << set;
    EXPECT_EQ(folder.content("log"), log) << set;
  }
}

TEST_F(Actions, ThatTakeTooLongAreLeftRunning) {
  program("sample", "echo $$ > pid; exec sleep 60");
  program("whole", "echo whole >> log");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(run(3, 300), 2);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(300));
  // On a busy machine it may not have come far by then.
  for (int i = 0; i < 20'000 && folder.content("pid").empty(); ++i) usleep(1000);
  const pid_t child = std::stoi("0" + folder.content("pid"));
  ASSERT_GT(child, 0);
  EXPECT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "it was not left running";
  EXPECT_EQ(kill(child, SIGKILL), 0);
}

// A shell that SIGPIPE kills, with 128 + 13, has not inherited that it is ignored. What is blocked, a shell
// may change itself, so that the other program is none: it copies its status over itself.
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
    alarm(9);  // sooner than the wait is over that does not see the program's end
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

TEST(Log, ReturnsTheTextItFormattedUpTo1023Bytes) {
  EXPECT_EQ(dbg_log("%d%%%s", 7, std::string(2000, 'x').c_str()), "7%" + std::string(1021, 'x'));
}

}  // namespace
}  // namespace camera::test
