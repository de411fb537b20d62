// The sockets of all daemons, in one poll loop.
#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace camera::simulator {

// How a daemon treats those who come.
enum class Behaviour : unsigned char {
  kUp,       // answers
  kDown,     // there is no socket
  kStale,    // there is a socket that nobody listens at
  kSilent,   // accepts, reads and never answers
  kClosing,  // closes at once
  kShort,    // answers one byte
  kEndless,  // answers, and then ten million bytes more
};
inline constexpr std::string_view kBehaviours[] = {"up",      "down",  "stale",  "silent",
                                                   "closing", "short", "endless"};

struct Daemon {
  std::string name;  // empty: no command names it
  std::string path;
  std::size_t requestSize;  // 0: whatever is sent until the other side ends
  std::function<std::string(const std::string& request)> answer;
  Behaviour behaviour = Behaviour::kUp;
  int listener = -1;
};

class Server {
 public:
  using Clock = std::chrono::steady_clock;

  // Listens for the daemon from the next step on. Its address stays where it is.
  Daemon* add(Daemon daemon);
  std::list<Daemon>& daemons() { return daemons_; }
  // False when the daemon's socket cannot be made; errno says why.
  bool behave(Daemon* daemon, Behaviour behaviour);

  // Serves whoever comes until then.
  void serveUntil(Clock::time_point end);

 private:
  struct Connection {
    int descriptor;
    Daemon* daemon;
    Clock::time_point end;
    std::string request{};
    std::string answer{};
    bool answers = false;
    std::size_t sent = 0;
  };

  void serveOnce(int milliseconds);
  void accept(Daemon* daemon);
  static bool goOn(Connection* connection);
  static bool read(Connection* connection);
  static bool write(Connection* connection);

  std::list<Daemon> daemons_;
  std::list<Connection> connections_;
};

}  // namespace camera::simulator
