// The sockets of all daemons, in one poll loop.
#include "virtual-camera/simulator/server.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace camera::simulator {
namespace {

constexpr std::size_t kMostConnections = 256;
constexpr std::chrono::seconds kPatience{60};  // after accept; then an idle client is dropped
constexpr std::size_t kLongestText = 65536;
constexpr std::size_t kEndlessBytes = 10'000'000;

// Returns no descriptor, with errno set, on failure.
Descriptor listenAt(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  Descriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  const bool listens =
      listener.isOpen() &&
      bind(listener.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
      listen(listener.number(), SOMAXCONN) == 0;
  return listens ? std::move(listener) : Descriptor();
}

bool mustWait() {
  return errno == EAGAIN || errno == EINTR;
}

}  // namespace

Daemon* Server::add(Daemon daemon) {
  daemons_.push_back(std::move(daemon));
  return &daemons_.back();
}

bool Server::behave(Daemon* daemon, Behaviour behaviour) {
  daemon->behaviour = behaviour;
  const bool listens = behaviour != Behaviour::kDown && behaviour != Behaviour::kStale;
  if (listens && daemon->listener.isOpen()) return true;
  daemon->listener.close();
  unlink(daemon->path.c_str());
  if (behaviour == Behaviour::kDown) return true;
  daemon->listener = listenAt(daemon->path);
  const bool isCreated = daemon->listener.isOpen();
  if (!listens) daemon->listener.close();
  return isCreated;
}

void Server::serveUntil(Clock::time_point end) {
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0) return;
    serveOnce(static_cast<int>(left));
  }
}

void Server::serveOnce(int milliseconds) {
  std::vector<pollfd> entries;
  for (const Connection& connection : connections_) {
    const short events = connection.answers ? POLLOUT : POLLIN;
    entries.push_back({.fd = connection.socket.number(), .events = events, .revents = 0});
  }
  const std::size_t clients = entries.size();
  for (const Daemon& daemon : daemons_) {
    const bool hasRoom = clients < kMostConnections;
    entries.push_back({.fd = hasRoom ? daemon.listener.number() : -1, .events = POLLIN, .revents = 0});
  }
  if (poll(entries.data(), entries.size(), milliseconds) < 0) return;

  auto entry = entries.begin();
  const Clock::time_point now = Clock::now();
  for (auto connection = connections_.begin(); connection != connections_.end(); ++entry) {
    const bool stays = entry->revents != 0 ? goOn(&*connection) : now < connection->end;
    connection = stays ? std::next(connection) : connections_.erase(connection);
  }
  // A command that was served above may have closed a listener.
  for (Daemon& daemon : daemons_) {
    if (entry->revents != 0 && entry->fd == daemon.listener.number()) accept(&daemon);
    ++entry;
  }
}

void Server::accept(Daemon* daemon) {
  Descriptor client(accept4(daemon->listener.number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (!client.isOpen() || daemon->behaviour == Behaviour::kClosing) return;
  connections_.push_back({.socket = std::move(client), .daemon = daemon, .end = Clock::now() + kPatience});
}

// Reads or writes. False if the connection has ended.
bool Server::goOn(Connection* connection) {
  return connection->answers ? write(connection) : read(connection);
}

bool Server::read(Connection* connection) {
  const Daemon& daemon = *connection->daemon;
  const std::size_t most = daemon.requestSize > 0 ? daemon.requestSize : kLongestText;
  std::array<char, 4096> block;
  const ssize_t count = recv(connection->socket.number(), block.data(), block.size(), 0);
  if (count < 0) return mustWait();
  connection->request.append(block.data(), static_cast<std::size_t>(count));
  if (daemon.behaviour == Behaviour::kSilent) return count > 0;
  const bool isWhole = connection->request.size() >= most;
  if (!isWhole && (count > 0 || daemon.requestSize > 0)) return count > 0;
  connection->request.resize(std::min(most, connection->request.size()));
  connection->answer = daemon.answer(connection->request);
  if (daemon.behaviour == Behaviour::kShort) connection->answer.resize(1);
  if (daemon.behaviour == Behaviour::kEndless) connection->answer.append(kEndlessBytes, '\0');
  connection->answers = true;
  return write(connection);
}

bool Server::write(Connection* connection) {
  const std::string& answer = connection->answer;
  while (connection->sent < answer.size()) {
    const ssize_t count = send(connection->socket.number(), &answer[connection->sent],
                               answer.size() - connection->sent, MSG_NOSIGNAL);
    if (count < 0) return mustWait();
    connection->sent += static_cast<std::size_t>(count);
  }
  return false;
}

}  // namespace camera::simulator
