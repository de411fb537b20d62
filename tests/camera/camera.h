// A whole camera for a test: its own sandbox and state folder, and a web server on a port of its own.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace camera::test {

using Command = std::vector<std::string>;

struct Output {
  int status;  // exit status; minus the signal where one ended it
  std::string out;
  std::string err;
};

struct Reply {
  int status;  // 0: no answer
  std::string head;
  std::string body;
};

// Starts a program with these files as its standard streams.
pid_t start(const Command& command, const std::string& in, const std::string& out, const std::string& err);
int waitFor(pid_t pid);

// A socket that listens on a free port, which it stores; to be closed.
int listenSomewhere(int* port);
int freePort();
// Sends a request as it stands, its line without the version. A Host is added where the rest, headers and
// perhaps a body, does not begin with one.
Reply ask(int port, const std::string& line, const std::string& rest = {});
Reply fetch(int port, const std::string& path);

// True as soon as the condition holds, false when it still does not after so many seconds.
template <class Condition>
bool within(double seconds, Condition condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

// The processes that were started with the folder's name, or run in a sandbox with a state in it; of those,
// the ones whose command line begins so.
std::vector<pid_t> processesOf(const TemporaryFolder& folder, const std::string& program = {});

// Fails the test if a program of a camera with this state was ended by a sanitizer.
void expectNoSanitizerReport(const std::filesystem::path& state);

// A camera with a web server on a port of its own, which is the factory's, too.
class Camera {
 public:
  Camera();  // as it left the factory, with every feature; off
  ~Camera();

  void boot();  // returns when it answers
  void turnOff();

  Reply get(const std::string& path);
  Output run(const Command& command);     // outside of it
  Output inside(const Command& command);  // in a fresh sandbox on the same state

  std::filesystem::path record(const std::string& name) const { return state() / "settings" / name; }
  std::filesystem::path state() const { return folder_.path("state"); }
  std::vector<pid_t> processes(const std::string& program) const { return processesOf(folder_, program); }
  std::string log() const { return readFile(state() / "log" / "camera.log"); }
  int port() const;    // where it said last that it answers
  int starts() const;  // how often it said so

  const int factoryPort = freePort();

 private:
  Command sandbox(const std::string& program) const;

  TemporaryFolder folder_;
  pid_t boot_ = 0;
};

}  // namespace camera::test
