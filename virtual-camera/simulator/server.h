// The sockets of all daemons, in one poll loop.
#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "platform/descriptor.h"

namespace camera::simulator {

// What a daemon does with its clients.
enum class Behaviour : unsigned char {
  kUp,       // answers
  kDown,     // has no socket
  kStale,    // has a socket, but does not listen
  kSilent,   // accepts, reads and never answers
  kClosing,  // closes at once
  kShort,    // answers one byte
  kEndless,  // answers, and sends ten million bytes more
};
inline constexpr std::string_view kBehaviours[] = {"up",      "down",  "stale",  "silent",
                                                   "closing", "short", "endless"};

struct Daemon {
  std::string name;  // in the command "daemon"; empty if that command cannot change this daemon
  std::string path;
  std::size_t requestSize;  // 0: everything until the client stops sending
  std::function<std::string(const std::string& request)> answer;
  Behaviour behaviour = Behaviour::kUp;
  Descriptor listener{};
};

class Server {
 public:
  using Clock = std::chrono::steady_clock;

  // The daemon does not listen before behave is called. The pointer stays valid.
  Daemon* add(Daemon daemon);
  std::list<Daemon>& daemons() { return daemons_; }
  // False, with errno, if the daemon's socket cannot be created.
  bool behave(Daemon* daemon, Behaviour behaviour);

  void serveUntil(Clock::time_point end);

 private:
  struct Connection {
    Descriptor socket;
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
