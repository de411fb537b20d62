// Starts each program many times and prints what a start costs.
//
//   spawn-cost ROUNDS PROGRAM[?QUERY]...
//
// One line per program: median CPU time and median wall time in microseconds, peak memory in KiB. A program
// runs as a GET request with the query string QUERY; its output is dropped.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr int kWarmUpRounds = 20;

struct Program {
  std::string path;
  std::string query;  // an environment entry
  std::vector<double> cpu{};
  std::vector<double> wall{};
  long peakMemory = 0;
};

[[noreturn]] void fail(const std::string& what) {
  static_cast<void>(std::fprintf(stderr, "spawn-cost: %s\n", what.c_str()));
  std::exit(1);
}

Program parseProgram(const std::string& argument) {
  const std::size_t mark = argument.find('?');
  if (mark == std::string::npos) return {.path = argument, .query = "QUERY_STRING="};
  return {.path = argument.substr(0, mark), .query = "QUERY_STRING=" + argument.substr(mark + 1)};
}

double microseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

double now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

void start(Program& program, const posix_spawn_file_actions_t& quiet, bool counts) {
  std::string method = "REQUEST_METHOD=GET";
  char* argv[] = {program.path.data(), nullptr};
  char* environment[] = {method.data(), program.query.data(), nullptr};
  const double begin = now();
  pid_t pid = 0;
  if (posix_spawn(&pid, program.path.c_str(), &quiet, nullptr, argv, environment) != 0)
    fail("cannot start " + program.path);
  int status = 0;
  rusage usage{};
  if (wait4(pid, &status, 0, &usage) != pid || status != 0) fail(program.path + " did not end well");
  if (!counts) return;
  program.wall.push_back(now() - begin);
  program.cpu.push_back(microseconds(usage.ru_utime) + microseconds(usage.ru_stime));
  program.peakMemory = std::max(program.peakMemory, usage.ru_maxrss);
}

double median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

int main(int argc, char** argv) {
  const long rounds = argc > 2 ? std::strtol(argv[1], nullptr, 10) : 0;
  if (rounds <= 0) fail("usage: spawn-cost ROUNDS PROGRAM[?QUERY]...");
  std::vector<Program> programs;
  for (int i = 2; i < argc; ++i) programs.push_back(parseProgram(argv[i]));

  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  for (const int descriptor : {0, 1, 2})
    posix_spawn_file_actions_addopen(&quiet, descriptor, "/dev/null", O_RDWR, 0);

  // In turn, so that a change of the machine's load affects all of them.
  for (long round = -kWarmUpRounds; round < rounds; ++round) {
    for (Program& program : programs) start(program, quiet, round >= 0);
  }
  for (Program& program : programs) {
    std::printf("%.1f %.1f %ld\n", median(program.cpu), median(program.wall), program.peakMemory);
  }
  return 0;
}
