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
#include <vector>

#include "platform/little_endian.h"
#include "platform/log.h"
#include "platform/text.h"

namespace camera {
namespace {

// The shortest pause after a fetch that empties the queue. A flood then does not wake the listener for each
// package.
constexpr std::chrono::milliseconds kFetchInterval{20};

constexpr in_addr_t kLoopbackNet = IN_LOOPBACKNET << IN_CLASSA_NSHIFT;
constexpr std::size_t kMostAddresses = 500;  // a program may have some 2000 instructions

// Makes the kernel drop datagrams of another length or from another machine, so that they do not fill the
// queue.
bool acceptOnlyPackages(int descriptor, const std::vector<in_addr_t>& ownAddresses) {
  constexpr std::uint32_t kUdpHeader = 8;
  constexpr auto kSource = static_cast<std::uint32_t>(SKF_NET_OFF + 12);  // in the IP header
  constexpr sock_filter kAccept = BPF_STMT(BPF_RET | BPF_K, kUdpHeader + sizeof(StatusPackage));
  constexpr sock_filter kDrop = BPF_STMT(BPF_RET | BPF_K, 0);
  std::vector<sock_filter> program{
      BPF_STMT(BPF_LD | BPF_W | BPF_LEN, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kUdpHeader + sizeof(StatusPackage), 1, 0),
      kDrop,
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kSource),
      BPF_STMT(BPF_ALU | BPF_AND | BPF_K, IN_CLASSA_NET),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kLoopbackNet, 0, 1),
      kAccept,
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kSource),
  };
  for (std::size_t i = 0; i < std::min(ownAddresses.size(), kMostAddresses); ++i) {
    program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, ntohl(ownAddresses[i]), 0, 1));
    program.push_back(kAccept);
  }
  program.push_back(kDrop);
  const sock_fprog filter{.len = static_cast<unsigned short>(program.size()), .filter = program.data()};
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
    logDebug(joined({"status packages on ", interface.ifa_name, ": ", errorText(errno)}));
  }
}

void toNative(StatusPackage* package) {
  std::array<std::uint32_t, sizeof *package / sizeof(std::uint32_t)> words;
  std::memcpy(words.data(), package, sizeof *package);
  for (std::uint32_t& word : words) word = loadLittle<std::uint32_t>(&word);
  std::memcpy(package, words.data(), sizeof *package);
}

}  // namespace

// The system's list has one entry for each interface (AF_PACKET), and one for each address of it.
void StatusReceiver::open() {
  begin_ = Clock::now();
  ifaddrs* interfaces = nullptr;
  if (getifaddrs(&interfaces) != 0) {
    logDebug(joined({"status packages: ", errorText(errno)}));
    return;
  }
  std::vector<in_addr_t> ownAddresses;  // in network byte order
  for (const ifaddrs* entry = interfaces; entry != nullptr; entry = entry->ifa_next) {
    if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_INET)
      ownAddresses.push_back(reinterpret_cast<const sockaddr_in*>(entry->ifa_addr)->sin_addr.s_addr);
  }
  socket_ = Descriptor(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (socket_.isOpen() && acceptOnlyPackages(socket_.number(), ownAddresses) &&
      bindToGroup(socket_.number())) {
    for (const ifaddrs* entry = interfaces; entry != nullptr; entry = entry->ifa_next) {
      if (entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_PACKET)
        join(socket_.number(), *entry);
    }
  } else {
    logDebug(joined({"status packages: ", errorText(errno)}));
  }
  freeifaddrs(interfaces);
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
  for (std::size_t i = 0; i < kBatch; ++i) {
    buffers[i] = {.iov_base = &batch_[i], .iov_len = sizeof batch_[i]};
    messages[i].msg_hdr.msg_iov = &buffers[i];
    messages[i].msg_hdr.msg_iovlen = 1;
  }
  const int received = recvmmsg(socket_.number(), messages.data(), kBatch, MSG_DONTWAIT, nullptr);
  if (received < static_cast<int>(kBatch)) nextFetch_ = Clock::now() + kFetchInterval;
  for (int i = 0; i < received; ++i) toNative(&batch_[count_++]);
  return true;
}

}  // namespace camera
