// The kernel's view of the camera's network interfaces: addresses by ioctl, gateways from the routing table.
#include "platform/network/if_info.h"

#include <net/if.h>
#include <net/route.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/file.h"
#include "platform/log.h"
#include "platform/product/pib.h"
#include "platform/text.h"

namespace {

using camera::readNumber;
using camera::takeUntil;

constexpr char kRoutes[] = "/proc/net/route";
constexpr std::uint32_t kActive = IFF_UP | IFF_RUNNING;

// The columns of a line of the routing table, in order, as far as they are looked at.
enum Column : std::uint8_t {
  kInterface,
  kDestination,
  kGateway,
  kFlags,
  kReferences,
  kUse,
  kMetric,
  kMask,
  kColumns
};
using Route = std::array<std::string_view, kColumns>;

// True for a usable default route; the table's numbers are the addresses as they lie in memory.
bool readDefaultRoute(const Route& route, std::uint32_t* metric, in_addr* gateway) {
  std::uint32_t destination = 0;
  std::uint32_t flags = 0;
  std::uint32_t mask = 0;
  std::int32_t signedMetric = 0;  // so the kernel prints it, whatever its size
  if (!readNumber(route[kDestination], &destination, 16) || !readNumber(route[kFlags], &flags, 16) ||
      !readNumber(route[kMask], &mask, 16) || !readNumber(route[kMetric], &signedMetric) ||
      !readNumber(route[kGateway], &gateway->s_addr, 16)) {
    return false;
  }
  *metric = static_cast<std::uint32_t>(signedMetric);
  return destination == 0 && mask == 0 && (flags & (RTF_UP | RTF_REJECT)) == RTF_UP;
}

// The questions that the kernel answers about one interface.
class KernelInterface {
 public:
  explicit KernelInterface(const std::string& name) : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    if (socket_ < 0) dbg_log("interface %s: %s", name.c_str(), std::strerror(errno));
    if (name.size() < sizeof request_.ifr_name) name.copy(request_.ifr_name, name.size());
  }
  ~KernelInterface() {
    if (socket_ >= 0) close(socket_);
  }
  KernelInterface(const KernelInterface&) = delete;
  KernelInterface& operator=(const KernelInterface&) = delete;

  std::uint32_t flags() { return ask(SIOCGIFFLAGS) ? static_cast<std::uint16_t>(request_.ifr_flags) : 0; }
  std::int32_t index() { return ask(SIOCGIFINDEX) ? request_.ifr_ifindex : 0; }
  in_addr address() { return addressFrom(SIOCGIFADDR); }
  in_addr netmask() { return addressFrom(SIOCGIFNETMASK); }
  in_addr broadcast() { return addressFrom(SIOCGIFBRDADDR); }

 private:
  bool ask(unsigned long question) { return ioctl(socket_, question, &request_) == 0; }

  in_addr addressFrom(unsigned long question) {
    sockaddr_in answer{};
    if (ask(question)) std::memcpy(&answer, &request_.ifr_addr, sizeof answer);
    return answer.sin_addr;
  }

  int socket_;
  ifreq request_{};
};

}  // namespace

namespace camera {

bool activeInterface(const std::string& systemName, IF_INFO* info) {
  KernelInterface kernel{systemName};
  IF_INFO found{};
  found.flags = kernel.flags();
  if ((found.flags & kActive) != kActive) return false;
  found.address = kernel.address();
  if (found.address.s_addr == INADDR_ANY) return false;
  found.netmask = kernel.netmask();
  found.broadcast = kernel.broadcast();
  found.index = kernel.index();
  std::string routes;
  readFile(kRoutes, &routes);
  found.gateway = defaultGateway(routes, systemName);
  *info = found;
  return true;
}

in_addr defaultGateway(std::string_view routes, std::string_view systemName) {
  in_addr best{};
  std::uint32_t bestMetric = 0;
  bool found = false;
  while (!routes.empty()) {
    std::string_view line = takeUntil('\n', &routes);
    Route route;
    for (std::string_view& column : route) column = takeUntil('\t', &line);
    std::uint32_t metric = 0;
    in_addr gateway{};
    if (route[kInterface] != systemName || !readDefaultRoute(route, &metric, &gateway)) continue;
    if (found && metric >= bestMetric) continue;
    best = gateway;
    bestMetric = metric;
    found = true;
  }
  return best;
}

}  // namespace camera

bool GetActiveIFInfo(const char* name, IF_INFO* info) {
  PIB product;
  try {
    product.init();
  } catch (const PIBError&) {
    return false;
  }
  return camera::activeInterface(product.interfaceName(name), info);
}
