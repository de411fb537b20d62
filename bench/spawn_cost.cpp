// Starts each program many times and prints what a start costs.
//
//   spawn-cost ROUNDS PROGRAM[?QUERY]...
//
// One line per program: lowest CPU time and lowest wall time in microseconds, peak memory in KiB, page
// faults. A program runs as a CGI program with the environment of this one, but its own path and query; # in
// the query is a number that is new at each start. Its output is dropped. A program that takes long is
// started once.
#include <fcntl.h>
#include <spawn.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int kFirstNumber = 100'000;  // higher than those of bench/in-camera
constexpr double kLongMicroseconds = 1e6;

struct Cost {
  double cpu;
  double wall;
};

struct Program {
  std::string path;
  std::string query;
  Cost lowest{1e12, 1e12};
  long peakMemory = 0;
  long pageFaults = 0;
};

[[noreturn]] void fail(const std::string& what) {
  static_cast<void>(std::fprintf(stderr, "spawn-cost: %s\n", what.c_str()));
  std::exit(1);
}

Program parseProgram(const std::string& argument) {
  const std::size_t mark = std::min(argument.find('?'), argument.size());
  return {.path = argument.substr(0, mark), .query = argument.substr(std::min(mark + 1, argument.size()))};
}

void setRequest(const Program& program) {
  static int number = kFirstNumber;
  std::string query = program.query;
  const std::size_t mark = query.find('#');
  if (mark != query.npos) query.replace(mark, 1, std::to_string(++number));
  setenv("QUERY_STRING", query.c_str(), 1);
  setenv("SCRIPT_FILENAME", program.path.c_str(), 1);
}

double microseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_usec);
}

double now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

void start(Program& program, const posix_spawn_file_actions_t& quiet) {
  setRequest(program);
  char* argv[] = {program.path.data(), nullptr};
  const double begin = now();
  pid_t pid = 0;
  if (posix_spawn(&pid, program.path.c_str(), &quiet, nullptr, argv, environ) != 0)
    fail("cannot start " + program.path);
  int status = 0;
  rusage usage{};
  if (wait4(pid, &status, 0, &usage) != pid || status != 0) fail(program.path + " did not end well");
  program.lowest.wall = std::min(program.lowest.wall, now() - begin);
  program.lowest.cpu =
      std::min(program.lowest.cpu, microseconds(usage.ru_utime) + microseconds(usage.ru_stime));
}

long peakMemory(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/status");
  std::string line;
  while (std::getline(file, line))
    if (line.starts_with("VmHWM:")) return std::stol(line.substr(6));
  return 0;
}

long pageFaults(pid_t pid) {
  constexpr int kField = 10;  // counted from 1
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  std::string word;
  for (int i = 0; i < kField; ++i) file >> word;
  return std::strtol(word.c_str(), nullptr, 10);
}

// Looks at the program when its image is loaded, and when it is about to end. The resources that the kernel
// reports for a child hold those of this program too, which the child shares before exec.
void watch(Program& program) {
  setRequest(program);
  const pid_t pid = fork();
  if (pid == 0) {
    const int nothing = open("/dev/null", O_RDWR);
    for (const int descriptor : {0, 1, 2}) dup2(nothing, descriptor);
    ptrace(PTRACE_TRACEME, 0, 0, 0);
    execl(program.path.c_str(), program.path.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  if (waitpid(pid, &status, 0) != pid || !WIFSTOPPED(status)) fail("cannot watch " + program.path);
  const long faultsBefore = pageFaults(pid);
  ptrace(PTRACE_SETOPTIONS, pid, 0, PTRACE_O_TRACEEXIT | PTRACE_O_EXITKILL);
  int signal = 0;
  while (ptrace(PTRACE_CONT, pid, 0, signal) == 0 && waitpid(pid, &status, 0) == pid && WIFSTOPPED(status)) {
    const bool isEnding = status >> 8 == (SIGTRAP | PTRACE_EVENT_EXIT << 8);
    signal = isEnding ? 0 : WSTOPSIG(status);
    if (!isEnding) continue;
    program.peakMemory = peakMemory(pid);
    program.pageFaults = pageFaults(pid) - faultsBefore;
  }
}

}  // namespace

int main(int argc, char** argv) {
  const long rounds = argc > 2 ? std::strtol(argv[1], nullptr, 10) : 0;
  if (rounds <= 0) fail("usage: spawn-cost ROUNDS PROGRAM[?QUERY]...");
  std::vector<Program> programs;
  for (int i = 2; i < argc; ++i) programs.push_back(parseProgram(argv[i]));
  for (Program& program : programs) watch(program);

  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  for (const int descriptor : {0, 1, 2})
    posix_spawn_file_actions_addopen(&quiet, descriptor, "/dev/null", O_RDWR, 0);

  std::vector<Program*> rest;
  rest.reserve(programs.size());
  for (Program& program : programs) rest.push_back(&program);
  const auto isLong = [](const Program* program) { return program->lowest.wall > kLongMicroseconds; };
  // In turn, so that a change of the machine's load affects all of them. Each twice, because the first start
  // finds the processor's caches full of another program.
  for (long round = 0; round < rounds; ++round) {
    for (Program* program : rest) {
      start(*program, quiet);
      if (!isLong(program)) start(*program, quiet);
    }
    std::erase_if(rest, isLong);
  }
  for (const Program& program : programs) {
    std::printf("%.0f %.0f %ld %ld\n", program.lowest.cpu, program.lowest.wall, program.peakMemory,
                program.pageFaults);
  }
  return 0;
}
