// Protects the web server and the RTSP server from slow and from many connections. It is loaded into them
// (LD_PRELOAD) and stands between them and the system's accept4(), read() and recv().
//
// - A request has to be complete ten seconds after its first byte. The web server itself limits only the time
//   between two bytes, and drops a connection without a request. The RTSP server's first request has to be
//   complete ten seconds after the connection began; later ones share it with what a viewer reports.
// - One address has at most 64 connections, all have 256. For a new one beyond that the connection is shut
//   down that has waited longest for its request; without such a one, that which has been silent longest. The
//   server then closes it.
#include <dlfcn.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <mutex>
#include <unordered_map>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kRequestTime{10};
constexpr std::size_t kMostOfAddress = 64;
constexpr std::size_t kMost = 256;
constexpr std::size_t kContinue = sizeof "HTTP/1.1 100 Continue\r\n\r\n" - 1;  // no answer is so short

struct Connection {
  std::uint32_t address = 0;
  Clock::time_point begun;     // the current or last request or, before the first, the connection
  Clock::time_point last;      // when something was received
  std::uint64_t answered = 0;  // bytes that had been sent when that request began
  std::uint64_t sent = 0;      // bytes
  bool isWaiting() const { return sent - answered <= kContinue; }
};

std::unordered_map<int, Connection> connections;  // by descriptor
std::mutex mutex;                                 // the RTSP server has threads

template <class Function>
Function* systems(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// False if the descriptor is no connection any more: the web server closes it without telling.
bool update(int descriptor, Connection* connection) {
  constexpr int kClosed = 7;  // TCP_CLOSE
  tcp_info info{};
  socklen_t size = sizeof info;
  if (getsockopt(descriptor, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) return false;
  connection->sent = info.tcpi_bytes_sent;
  return info.tcpi_state != kClosed;
}

// True if the first is to be shut down rather than the second.
bool isWorse(const Connection& first, const Connection& second) {
  if (first.isWaiting() != second.isWaiting()) return first.isWaiting();
  return first.isWaiting() ? first.begun < second.begun : first.last < second.last;
}

// Makes room for a connection from this address.
void makeRoom(std::uint32_t address) {
  if (connections.size() < kMostOfAddress) return;
  for (auto entry = connections.begin(); entry != connections.end();)
    entry = update(entry->first, &entry->second) ? std::next(entry) : connections.erase(entry);
  std::unordered_map<std::uint32_t, std::size_t> counts;
  for (const auto& [descriptor, connection] : connections) ++counts[connection.address];
  if (counts[address] < kMostOfAddress) {
    if (connections.size() < kMost) return;
    for (const auto& [other, count] : counts) {
      if (count > counts[address]) address = other;
    }
  }
  auto worst = connections.end();
  for (auto entry = connections.begin(); entry != connections.end(); ++entry) {
    if (entry->second.address != address) continue;
    if (worst == connections.end() || isWorse(entry->second, worst->second)) worst = entry;
  }
  if (worst == connections.end()) return;
  (void)shutdown(worst->first, SHUT_RDWR);
  connections.erase(worst);
}

void add(int descriptor, const sockaddr_in& peer) {
  const std::scoped_lock lock(mutex);
  makeRoom(peer.sin_addr.s_addr);
  const Clock::time_point now = Clock::now();
  connections[descriptor] = {.address = peer.sin_addr.s_addr, .begun = now, .last = now};
}

enum class Timed { kEachRequest, kFirstRequest };

// False if the request on this connection takes too long.
bool received(Connection* connection, Timed timed) {
  const Clock::time_point now = Clock::now();
  connection->last = now;
  if (connection->isWaiting()) return now - connection->begun <= kRequestTime;
  if (timed == Timed::kFirstRequest) return true;
  connection->begun = now;
  connection->answered = connection->sent;
  return true;
}

// Returns the size of what was received, or -1 if the request takes too long.
ssize_t checked(int descriptor, ssize_t size, Timed timed) {
  if (size <= 0) return size;
  const std::scoped_lock lock(mutex);
  const auto entry = connections.find(descriptor);
  if (entry == connections.end()) return size;
  if (!update(descriptor, &entry->second)) {
    connections.erase(entry);
  } else if (!received(&entry->second, timed)) {
    (void)shutdown(descriptor, SHUT_RDWR);
    connections.erase(entry);
    errno = ECONNRESET;
    return -1;
  }
  return size;
}

}  // namespace

extern "C" int accept4(int listener, sockaddr* peer, socklen_t* size, int flags) {
  static auto* const real = systems<decltype(accept4)>("accept4");
  const int descriptor = real(listener, peer, size, flags);
  if (descriptor >= 0 && peer != nullptr && peer->sa_family == AF_INET)
    add(descriptor, *reinterpret_cast<const sockaddr_in*>(peer));
  return descriptor;
}

extern "C" ssize_t read(int descriptor, void* buffer, std::size_t room) {
  static auto* const real = systems<decltype(read)>("read");
  return checked(descriptor, real(descriptor, buffer, room), Timed::kEachRequest);
}

extern "C" ssize_t recv(int descriptor, void* buffer, std::size_t room, int flags) {
  static auto* const real = systems<decltype(recv)>("recv");
  return checked(descriptor, real(descriptor, buffer, room, flags), Timed::kFirstRequest);
}
