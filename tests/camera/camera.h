// A whole camera for a test, with its own sandbox, state folder and port.
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
  int status;  // exit status, or minus the signal that ended it
  std::string out;
  std::string err;
};

struct Reply {
  int status;  // 0: no answer
  std::string head;
  std::string body;
};

// Starts a program with these files as its standard streams. The camera's programs are those of the folder
// CAMERA_BUILD_DIR or, without that variable, of this test's build.
pid_t start(const Command& command, const std::string& in, const std::string& out, const std::string& err);
int waitFor(pid_t pid);

// Returns a socket that listens on a free port, and stores the port. The caller closes it.
int listenSomewhere(int* port);
int freePort();
// Sends the request line, to which it adds the version, and the rest: headers and perhaps a body. Adds a Host
// unless the rest begins with one.
// A request that a test sends in parts.
class Connection {
 public:
  explicit Connection(int port, const char* from = nullptr);  // "from" is another loopback address
  Connection(const Connection&) = delete;
  ~Connection();
  void send(const std::string& part) const;
  std::string receive() const;  // until the other side closes or says nothing for 30 s

 private:
  int descriptor_;
};
Reply ask(int port, const std::string& line, const std::string& rest = {});
Reply fetch(int port, const std::string& path);

// True as soon as the condition holds, false if it does not within the seconds.
template <class Condition>
bool within(double seconds, Condition condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return true;
}

// Returns the processes that name the folder in their command line or run in a sandbox with a state in it, if
// their command line begins with program.
std::vector<pid_t> processesOf(const TemporaryFolder& folder, const std::string& program = {});

// Fails the test if a program of a camera with this state was ended by a sanitizer.
void expectNoSanitizerReport(const std::filesystem::path& state);

class Camera {
 public:
  Camera();  // new, with every feature; off
  ~Camera();

  void boot();  // returns when the web server listens
  void turnOff();

  Reply get(const std::string& path);
  Output run(const Command& command);     // on the host
  Output inside(const Command& command);  // in another sandbox of the same state

  std::filesystem::path record(const std::string& name) const { return state() / "store/settings" / name; }
  std::filesystem::path state() const { return folder_.path("state"); }
  std::vector<pid_t> processes(const std::string& program) const { return processesOf(folder_, program); }
  std::string log() const { return readFile(state() / "log" / "camera.log"); }
  int port() const;    // on which it listens
  int starts() const;  // of the web server so far

  const int factoryPort = freePort();
  Command options;  // more of them, for boot()

 private:
  Command sandbox(const std::string& program) const;

  TemporaryFolder folder_;
  pid_t boot_ = 0;
};

}  // namespace camera::test
