// Shell commands: what they inherit, and the pieces in which their output comes.
#include "platform/shell.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

namespace camera::test {
namespace {

std::vector<std::string> pieces(const char* command) {
  std::vector<std::string> all;
  const auto take = [](const char* piece, void* context) {
    static_cast<std::vector<std::string>*>(context)->emplace_back(piece);
  };
  all.push_back("status " + std::to_string(read_command(command, take, &all)));
  return all;
}

// Bits 12 and 16 of the mask of ignored signals are SIGPIPE and SIGCHLD.
TEST(Shell, InheritsNothingIgnored) {
  constexpr char kCheck[] = "exit $((0x$(sed -n 's/^SigIgn:.//p' /proc/self/status) & 0x11000 ? 1 : 3))";
  const auto runFromAWebServer = [&] {
    signal(SIGPIPE, SIG_IGN);
    signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(run_shell(kCheck), 3 << 8);
    EXPECT_EQ(pieces(kCheck), std::vector<std::string>{"status 768"});
    EXPECT_EQ(signal(SIGPIPE, SIG_DFL), SIG_IGN);
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
      {"printf 'a\\000b\\n%0126d\\000c\\n' 0", {"ab\n", full.substr(1), "c\n", "status 0"}},
      {"exit 5", {"status 1280"}}};
  for (const auto& [command, expected] : rows) EXPECT_EQ(pieces(command), expected) << command;
}

}  // namespace
}  // namespace camera::test
