// The kernel's view of the camera's network interfaces: addresses by ioctl, gateways from the routing table.
#include "platform/network/if_info.h"

#include <net/if.h>
#include <net/route.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "platform/file.h"
#include "platform/log.h"
#include "platform/product/product_info.h"
#include "platform/text.h"

namespace {

using camera::readNumber;
using camera::takeUntil;

constexpr char kRoutes[] = "/proc/net/route";

// A line of the routing table. Its numbers are the addresses as they lie in memory.
struct Route {
  std::uint32_t destination;
  std::uint32_t gateway;
  std::uint32_t flags;
  std::uint32_t metric;
  std::uint32_t mask;
};

// True for a usable default route of the interface; of other lines no more is read than is needed to tell.
bool readDefaultRoute(std::string_view line, std::string_view systemName, Route* route) {
  if (takeUntil('\t', &line) != systemName) return false;
  if (!readNumber(takeUntil('\t', &line), &route->destination, 16) || route->destination != 0) return false;
  if (!readNumber(takeUntil('\t', &line), &route->gateway, 16)) return false;
  if (!readNumber(takeUntil('\t', &line), &route->flags, 16)) return false;
  takeUntil('\t', &line);  // references and uses
  takeUntil('\t', &line);
  std::int32_t metric = 0;  // so the kernel prints it, whatever its size
  const bool hasMetric = readNumber(takeUntil('\t', &line), &metric);
  route->metric = static_cast<std::uint32_t>(metric);
  return hasMetric && readNumber(takeUntil('\t', &line), &route->mask, 16) && route->mask == 0 &&
         (route->flags & (RTF_UP | RTF_REJECT)) == RTF_UP;
}

// The questions that the kernel answers about one interface.
class KernelInterface {
 public:
  explicit KernelInterface(std::string_view name) : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    if (socket_ < 0) logDebug("interfaces: %s", std::strerror(errno));
    // A name that is too long for the system stays empty; a shortened one could be another interface's.
    if (name.size() < sizeof request_.ifr_name) name.copy(request_.ifr_name, name.size());
  }
  ~KernelInterface() {
    if (socket_ >= 0) close(socket_);
  }
  KernelInterface(const KernelInterface&) = delete;
  KernelInterface& operator=(const KernelInterface&) = delete;

  bool isActive() {
    constexpr int kActive = IFF_UP | IFF_RUNNING;
    return ask<SIOCGIFFLAGS>() && (request_.ifr_flags & kActive) == kActive;
  }
  in_addr address() { return addressFrom<SIOCGIFADDR>(); }
  in_addr netmask() { return addressFrom<SIOCGIFNETMASK>(); }

 private:
  // A constant has the type that the libc's ioctl wants: unsigned long to some, int to others.
  template <auto kQuestion>
  bool ask() {
    return ioctl(socket_, kQuestion, &request_) == 0;
  }

  template <auto kQuestion>
  in_addr addressFrom() {
    sockaddr_in answer{};
    if (ask<kQuestion>()) std::memcpy(&answer, &request_.ifr_addr, sizeof answer);
    return answer.sin_addr;
  }

  int socket_;
  ifreq request_{};
};

}  // namespace

namespace camera {

bool activeInterface(std::string_view systemName, IF_INFO* info) {
  KernelInterface kernel{systemName};
  IF_INFO found{};
  if (!kernel.isActive()) return false;
  found.address = kernel.address();
  if (found.address.s_addr == INADDR_ANY) return false;
  found.netmask = kernel.netmask();
  std::string routes;
  readFile(kRoutes, &routes);  // the address is worth reporting without a gateway too
  found.gateway = defaultGateway(routes, systemName);
  *info = found;
  return true;
}

in_addr defaultGateway(std::string_view routes, std::string_view systemName) {
  std::optional<Route> best;
  while (!routes.empty()) {
    Route route{};
    if (!readDefaultRoute(takeUntil('\n', &routes), systemName, &route)) continue;
    if (!best || route.metric < best->metric) best = route;
  }
  return {best ? best->gateway : INADDR_ANY};
}

}  // namespace camera

bool GetActiveIFInfo(const char* name, IF_INFO* info) {
  ProductInfo product;
  try {
    product.init();
  } catch (const ProductInfoError&) {
    return false;
  }
  return camera::activeInterface(product.interfaceName(name), info);
}
