// The status channel: packages that the camera's daemons send by multicast to all listeners.
#include "platform/daemons/status_receiver.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <linux/filter.h>
#include <net/if.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <thread>

#include "platform/little_endian.h"
#include "platform/log.h"

namespace camera {
namespace {

// The shortest pause after a fetch that empties the queue. A flood then does not wake the listener for each
// package.
constexpr std::chrono::milliseconds kFetchInterval{20};

// Makes the kernel drop datagrams of another length, so that they do not fill the queue.
bool acceptOnlyPackages(int descriptor) {
  constexpr std::uint32_t kUdpHeader = 8;
  sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_LEN, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kUdpHeader + sizeof(StatusPackage), 0, 1),
      BPF_STMT(BPF_RET | BPF_K, kUdpHeader + sizeof(StatusPackage)),
      BPF_STMT(BPF_RET | BPF_K, 0),
  };
  const sock_fprog filter{.len = static_cast<unsigned short>(std::size(program)), .filter = program};
  return setsockopt(descriptor, SOL_SOCKET, SO_ATTACH_FILTER, &filter, sizeof filter) == 0;
}

// Binds to the group's address, so that datagrams to an address of this machine do not arrive.
bool bindToGroup(int descriptor) {
  const int yes = 1;
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(kStatusPort);
  address.sin_addr.s_addr = inet_addr(kStatusGroup);
  return setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes) == 0 &&
         bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

void join(int descriptor, const ifaddrs& interface) {
  const bool canReceive =
      (interface.ifa_flags & IFF_UP) != 0 && (interface.ifa_flags & (IFF_MULTICAST | IFF_LOOPBACK)) != 0;
  if (!canReceive) return;
  ip_mreqn membership{};
  membership.imr_multiaddr.s_addr = inet_addr(kStatusGroup);
  membership.imr_ifindex = reinterpret_cast<const sockaddr_ll*>(interface.ifa_addr)->sll_ifindex;
  if (setsockopt(descriptor, IPPROTO_IP, IP_ADD_MEMBERSHIP, &membership, sizeof membership) != 0) {
    logDebug("status packages on %s: %s", interface.ifa_name, std::strerror(errno));
  }
}

void toNative(StatusPackage* package) {
  std::array<std::uint32_t, sizeof *package / sizeof(std::uint32_t)> words;
  std::memcpy(words.data(), package, sizeof *package);
  for (std::uint32_t& word : words) word = loadLittle<std::uint32_t>(&word);
  std::memcpy(package, words.data(), sizeof *package);
}

}  // namespace

void StatusReceiver::open() {
  begin_ = Clock::now();
  socket_ = Descriptor(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (socket_.isOpen() && acceptOnlyPackages(socket_.number()) && bindToGroup(socket_.number())) {
    joinEverywhere();
  } else {
    logDebug("status packages: %s", std::strerror(errno));
  }
}

// The system's list has one entry for each interface (AF_PACKET), and one for each address of it.
void StatusReceiver::joinEverywhere() {
  ifaddrs* interfaces = nullptr;
  if (getifaddrs(&interfaces) != 0) {
    logDebug("status packages: %s", std::strerror(errno));
    return;
  }
  for (const ifaddrs* entry = interfaces; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr == nullptr) continue;
    if (entry->ifa_addr->sa_family == AF_PACKET) join(socket_.number(), *entry);
    if (entry->ifa_addr->sa_family == AF_INET) {
      ownAddresses_.push_back(reinterpret_cast<const sockaddr_in*>(entry->ifa_addr)->sin_addr.s_addr);
    }
  }
  freeifaddrs(interfaces);
}

bool StatusReceiver::isOwn(in_addr source) const {
  return ntohl(source.s_addr) >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET ||
         std::find(ownAddresses_.begin(), ownAddresses_.end(), source.s_addr) != ownAddresses_.end();
}

int StatusReceiver::secondsSinceOpen() const {
  return static_cast<int>(std::chrono::floor<std::chrono::seconds>(Clock::now() - begin_).count());
}

bool StatusReceiver::wait(std::uint32_t events, StatusPackage* package, std::chrono::milliseconds time) {
  const auto end = Clock::now() + time;
  do {
    while (next_ < count_) {
      const StatusPackage& candidate = batch_[next_++];
      if ((candidate.event & events) == 0) continue;
      *package = candidate;
      return true;
    }
  } while (fetch(end));
  return false;
}

// Fills the batch with the packages that have arrived, if any. False if the time is over.
bool StatusReceiver::fetch(Clock::time_point end) {
  next_ = count_ = 0;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
  if (left <= 0) return false;
  pollfd entry{.fd = socket_.number(), .events = POLLIN, .revents = 0};
  if (poll(&entry, 1, static_cast<int>(left)) <= 0) return true;
  std::this_thread::sleep_until(std::min(nextFetch_, end));

  std::array<mmsghdr, kBatch> messages{};
  std::array<iovec, kBatch> buffers;
  std::array<sockaddr_in, kBatch> sources{};
  for (std::size_t i = 0; i < kBatch; ++i) {
    buffers[i] = {.iov_base = &batch_[i], .iov_len = sizeof batch_[i]};
    messages[i].msg_hdr = {.msg_name = &sources[i],
                           .msg_namelen = sizeof sources[i],
                           .msg_iov = &buffers[i],
                           .msg_iovlen = 1,
                           .msg_control = nullptr,
                           .msg_controllen = 0,
                           .msg_flags = 0};
  }
  const int received = recvmmsg(socket_.number(), messages.data(), kBatch, MSG_DONTWAIT, nullptr);
  if (received < static_cast<int>(kBatch)) nextFetch_ = Clock::now() + kFetchInterval;
  for (std::size_t i = 0; static_cast<int>(i) < received; ++i) {
    if (!isOwn(sources[i].sin_addr)) continue;
    batch_[count_] = batch_[i];
    toNative(&batch_[count_++]);
  }
  return true;
}

}  // namespace camera
