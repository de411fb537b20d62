// Keeps the last events and passes each new one to all listeners.
#include "services/events/recorder.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <vector>

#include "platform/clock/calendar.h"
#include "platform/store/records/curtime.h"
#include "platform/store/settings.h"
#include "platform/text.h"
#include "services/events/status_events.h"

namespace camera::events {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t kKept = 100;            // events
constexpr std::size_t kMostConnections = 32;  // more of them wait
constexpr int kMostPackages = 256;            // that are read before the listeners have their turn
constexpr milliseconds kRecordInterval{20};   // a flood of packages does not wake the listeners for each
constexpr std::chrono::seconds kAliveInterval{15};
constexpr std::chrono::seconds kQuietTime{10};     // then the network may have changed
constexpr std::chrono::seconds kClockInterval{1};  // between two looks at the clock's settings
constexpr std::string_view kFirst = "retry: 2000\n: alive\n\n";
constexpr std::string_view kAlive = ": alive\n\n";

std::int64_t systemMilliseconds() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<milliseconds>(now).count();
}

// UTC if the settings cannot be read.
std::int64_t readLocalShift() {
  ClockSettings local{};
  std::int64_t now = 0;
  do {
    now = std::time(nullptr);
    if (loadRecord(&local) != StoreResult::kDone) return 0;
  } while (std::time(nullptr) != now);
  return secondsOf({local.year, local.month, local.day, local.hour, local.minute, local.second}) - now;
}

// False if the client has gone, or does not read.
bool give(const Descriptor& client, std::string_view text) {
  const ssize_t sent = send(client.number(), text.data(), text.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  return sent == static_cast<ssize_t>(text.size());
}

}  // namespace

int Recorder::open(const char* path) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  if (!copyText(address.sun_path, sizeof address.sun_path, path)) return ENAMETOOLONG;
  server_ = Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  (void)unlink(path);
  (void)umask(0177);  // the web server runs as the same user
  const bool listens = server_.isOpen() &&
                       bind(server_.number(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                       listen(server_.number(), SOMAXCONN) == 0;
  // After a restart the numbers go on above those of before.
  nextId_ = static_cast<std::uint64_t>(systemMilliseconds());
  return listens ? 0 : errno;
}

void Recorder::run() {
  nextAlive_ = Clock::now() + kAliveInterval;
  for (;;) {
    const Clock::time_point now = Clock::now();
    if (!receiver_ || now - lastPackage_ > kQuietTime) {
      receiver_.emplace();
      receiver_->open();
      lastPackage_ = now;
    }
    if (now >= nextAlive_) {
      sendToAll(std::string{kAlive});
      nextAlive_ = now + kAliveInterval;
    }
    wait();
  }
}

// Waits until there is something to do, and does it.
void Recorder::wait() {
  const Clock::time_point now = Clock::now();
  const bool isPausing = now < nextRecord_;
  const auto end = isPausing ? nextRecord_ : std::min(nextAlive_, lastPackage_ + kQuietTime);
  const auto left = std::chrono::ceil<milliseconds>(end - now) + milliseconds(1);
  std::vector<pollfd> entries{
      {.fd = isPausing ? -1 : receiver_->descriptor(), .events = POLLIN, .revents = 0},
      {.fd = clients_.size() < kMostConnections ? server_.number() : -1, .events = POLLIN, .revents = 0}};
  for (const Client& client : clients_) {
    entries.push_back({.fd = client.socket.number(), .events = POLLIN, .revents = 0});
  }
  if (poll(entries.data(), entries.size(), static_cast<int>(std::max<std::int64_t>(left.count(), 1))) <= 0)
    return;

  auto entry = entries.begin() + 2;
  for (Client& client : clients_) {
    if ((entry++)->revents != 0 && !serve(&client)) client.socket.close();
  }
  std::erase_if(clients_, [](const Client& client) { return !client.socket.isOpen(); });
  if (entries[1].revents != 0) accept();
  if (entries[0].revents != 0) record();
}

void Recorder::record() {
  std::string text;
  StatusPackage package{};
  for (int i = 0; i < kMostPackages && receiver_->wait(~0U, &package, milliseconds(1)); ++i) {
    text += record(package);
  }
  lastPackage_ = Clock::now();
  nextRecord_ = lastPackage_ + kRecordInterval;
  if (!text.empty()) sendToAll(text);
}

std::string Recorder::record(const StatusPackage& package) {
  std::string all;
  const std::string time = timeText(localMilliseconds());
  for (const StatusEvent& event : eventsOf(package)) {
    if (last_.size() == kKept) last_.pop_front();
    all += last_.emplace_back(streamText(nextId_++, time, event));
  }
  return all;
}

std::int64_t Recorder::localMilliseconds() {
  if (const auto now = Clock::now(); now - shiftRead_ > kClockInterval) {
    localShift_ = readLocalShift();
    shiftRead_ = now;
  }
  return systemMilliseconds() + localShift_ * 1000;
}

void Recorder::sendToAll(const std::string& text) {
  std::erase_if(clients_, [&](const Client& c) { return c.isListener && !give(c.socket, text); });
}

void Recorder::accept() {
  Descriptor client(accept4(server_.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (client.isOpen()) clients_.push_back({.socket = std::move(client)});
}

// Carries out the client's line. False if its connection ends.
bool Recorder::serve(Client* client) {
  std::array<char, 64> line;
  const ssize_t length = recv(client->socket.number(), line.data(), line.size(), 0);
  if (length < 0) return errno == EAGAIN || errno == EINTR;
  std::string_view rest{line.data(), static_cast<std::size_t>(length)};
  rest = takeUntil('\n', &rest);
  const std::string_view command = takeUntil(' ', &rest);
  if (command == kDisconnect) {
    for (Client& other : clients_) {
      if (other.isListener) other.socket.close();
    }
    return false;
  }
  const auto listeners =
      std::count_if(clients_.begin(), clients_.end(), [](const Client& c) { return c.isListener; });
  if (command != kListen || client->isListener || listeners >= static_cast<int>(kMostListeners)) return false;
  client->isListener = true;
  return give(client->socket, std::string{kFirst} + since(rest));
}

// The kept events after that one; all of them if it is none of this recorder's, and none without an id.
std::string Recorder::since(std::string_view id) const {
  std::int64_t after = 0;
  if (id.empty() || !readInteger(id, 10, &after)) return {};
  const std::uint64_t first = nextId_ - last_.size();
  const auto next = static_cast<std::uint64_t>(after) + 1;
  std::string all;
  for (std::size_t i = next > first && next <= nextId_ ? static_cast<std::size_t>(next - first) : 0;
       i < last_.size(); ++i) {
    all += last_[i];
  }
  return all;
}

}  // namespace camera::events
