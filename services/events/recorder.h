// Keeps the last events and passes each new one to all listeners.
//
// A listener connects to kRecorder and sends one line: "listen" or, for the events that came after one that
// it has had, "listen ID". It gets the text of the stream, or the end of the connection if there are too many
// listeners. "disconnect" ends the connections of all listeners.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/daemons/status_receiver.h"
#include "platform/descriptor.h"

namespace camera::events {

inline constexpr char kRecorder[] = "/run/camera/events";
inline constexpr std::size_t kMostListeners = 16;
inline constexpr char kListen[] = "listen";
inline constexpr char kDisconnect[] = "disconnect";

class Recorder {
 public:
  // Returns 0 or an errno value.
  int open(const char* path);
  // Serves until the process is killed.
  [[noreturn]] void run();

 private:
  using Clock = std::chrono::steady_clock;

  struct Client {
    Descriptor socket;
    bool isListener = false;
  };

  void wait();
  void record();
  std::string record(const StatusPackage& package);
  std::int64_t localMilliseconds();
  void sendToAll(const std::string& text);
  void accept();
  bool serve(Client* client);
  std::string since(std::string_view id) const;

  Descriptor server_;
  std::optional<StatusReceiver> receiver_;
  std::list<Client> clients_;
  std::deque<std::string> last_;  // the texts of the last events
  std::uint64_t nextId_ = 0;
  std::int64_t localShift_ = 0;  // seconds from the system's clock to the camera's local time
  Clock::time_point shiftRead_;  // when it was read
  Clock::time_point lastPackage_;
  Clock::time_point nextRecord_;
  Clock::time_point nextAlive_;
};

}  // namespace camera::events
