// Action programs: which run, in what order, in what surroundings, and how long they are waited for.
#include "platform/actions.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "platform/log.h"
#include "tests/platform/sample_record.h"
#include "tests/platform/temporary_folder.h"

namespace camera::test {
namespace {

class Actions : public testing::Test {
 protected:
  void program(const std::string& name, const std::string& script, mode_t mode = 0700) {
    folder.put(name, "#!/bin/sh\ncd " + folder.path() + "\n" + script + "\n");
    ASSERT_EQ(chmod(folder.file(name).c_str(), mode), 0);
  }
  int run(std::uint64_t set, int waitMilliseconds = 10'000) {
    return runActions(set, kSampleRecords, {folder.path(), waitMilliseconds});
  }
  std::string log() { return folder.content("log"); }

  TemporaryFolder folder;
};

TEST_F(Actions, RunForTheRecordsOfTheSetInRecordOrder) {
  struct Row {
    std::uint64_t set;
    int started;
    const char* log;
  };
  program("sample", "echo sample >> log");
  program("whole", "sleep 0.05; echo whole >> log; exit 3");
  program("linked", "echo linked >> log");
  for (const Row& row : {Row{0, 0, ""}, Row{1, 1, "sample\n"}, Row{6, 2, "whole\nlinked\n"},
                         Row{7, 3, "sample\nwhole\nlinked\n"}, Row{0xF8, 0, ""}}) {
    folder.put("log", "");
    EXPECT_EQ(run(row.set), row.started) << row.set;
    EXPECT_EQ(log(), row.log) << row.set;
  }
}

TEST_F(Actions, AreSkippedWhereMissingOrNotExecutable) {
  program("whole", "echo whole >> log", 0600);
  program("linked", "echo linked >> log");
  EXPECT_EQ(run(7), 1);
  EXPECT_EQ(log(), "linked\n");
}

TEST_F(Actions, ThatTakeTooLongAreLeftRunning) {
  program("sample", "echo $$ > pid; exec sleep 60");
  program("whole", "echo whole >> log");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(run(3, 300), 2);
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, std::chrono::milliseconds(300));
  EXPECT_LT(took, std::chrono::seconds(20));
  // On a busy machine neither may have come far by then.
  for (int i = 0; i < 20'000 && (log().empty() || folder.content("pid").empty()); ++i) usleep(1000);
  const pid_t child = std::stoi("0" + folder.content("pid"));
  int status = 0;
  ASSERT_GT(child, 0);
  EXPECT_EQ(waitpid(child, &status, WNOHANG), 0) << "it was not left running";
  EXPECT_EQ(kill(child, SIGKILL), 0);
}

TEST_F(Actions, StartCleanWhateverTheProgramInherited) {
  program("sample",
          "grep -E '^Sig(Blk|Ign)' /proc/self/status > log\n"
          "fds=$(readlink /proc/$$/fd/0 /proc/$$/fd/1)\n"
          "echo \"$fds ${QUERY_STRING-none}\" > seen; echo into the reply");
  setenv("QUERY_STRING", "password=x", 1);
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGTERM);
  sigprocmask(SIG_BLOCK, &blocked, &before);
  const auto oldPipe = signal(SIGPIPE, SIG_IGN);
  const auto oldChild = signal(SIGCHLD, SIG_IGN);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(run(1), 1);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(9)) << "its end went unseen";
  EXPECT_EQ(signal(SIGCHLD, oldChild), SIG_IGN);
  EXPECT_EQ(signal(SIGPIPE, oldPipe), SIG_IGN);
  sigset_t after;
  sigprocmask(SIG_SETMASK, &before, &after);
  unsetenv("QUERY_STRING");
  EXPECT_TRUE(sigismember(&after, SIGTERM) == 1 && sigismember(&after, SIGCHLD) == 0);

  EXPECT_NE(log().find("SigBlk:\t0000000000000000"), std::string::npos) << log();
  const std::size_t ignored = log().find("SigIgn:\t");
  ASSERT_NE(ignored, std::string::npos);
  EXPECT_EQ(std::stoull(log().substr(ignored + 8), nullptr, 16) >> (SIGPIPE - 1) & 1, 0U) << log();
  EXPECT_EQ(folder.content("seen"), "/dev/null\n/dev/null none\n");
}

TEST(Log, ReturnsTheTextItFormattedUpTo1023Bytes) {
  EXPECT_EQ(dbg_log("cgi_name:%s %d%%", "a.cgi", 7), "cgi_name:a.cgi 7%");
  EXPECT_EQ(dbg_log("%s", std::string(2000, 'x').c_str()), std::string(1023, 'x'));
}

}  // namespace
}  // namespace camera::test
