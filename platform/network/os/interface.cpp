// The camera's network interfaces: addresses by ioctl, gateways from the routing table.
#include "platform/network/interface.h"

#include <net/if.h>
#include <net/route.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "platform/descriptor.h"
#include "platform/file.h"
#include "platform/log.h"
#include "platform/product/product_info.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr char kRoutes[] = "/proc/net/route";

// A line of the routing table. Its addresses are in network byte order: the kernel prints them unconverted.
struct Route {
  std::uint32_t destination;
  std::uint32_t gateway;
  std::uint32_t flags;
  std::uint32_t metric;
  std::uint32_t mask;
};

// True for a usable default route of the interface. Other lines are read only as far as needed to tell.
bool readDefaultRoute(std::string_view line, std::string_view systemName, Route* route) {
  if (takeUntil('\t', &line) != systemName) return false;
  if (!readNumber(takeUntil('\t', &line), &route->destination, 16) || route->destination != 0) return false;
  if (!readNumber(takeUntil('\t', &line), &route->gateway, 16)) return false;
  if (!readNumber(takeUntil('\t', &line), &route->flags, 16)) return false;
  takeUntil('\t', &line);  // references and uses
  takeUntil('\t', &line);
  std::int32_t metric = 0;  // the kernel prints a large one as negative
  const bool hasMetric = readNumber(takeUntil('\t', &line), &metric);
  route->metric = static_cast<std::uint32_t>(metric);
  return hasMetric && readNumber(takeUntil('\t', &line), &route->mask, 16) && route->mask == 0 &&
         (route->flags & (RTF_UP | RTF_REJECT)) == RTF_UP;
}

// Asks the kernel about one interface.
class KernelInterface {
 public:
  explicit KernelInterface(std::string_view name) : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    if (!socket_.isOpen()) logDebug(joined({"interfaces: ", errorText(errno)}));
    // A name that is too long for the system stays empty; a shortened one could be another interface's.
    if (name.size() < sizeof request_.ifr_name) name.copy(request_.ifr_name, name.size());
  }

  bool isActive() {
    constexpr int kActive = IFF_UP | IFF_RUNNING;
    return ask<SIOCGIFFLAGS>() && (request_.ifr_flags & kActive) == kActive;
  }
  in_addr address() { return addressFrom<SIOCGIFADDR>(); }
  in_addr netmask() { return addressFrom<SIOCGIFNETMASK>(); }

 private:
  // A template, since the question's type differs between libcs: unsigned long or int.
  template <auto kQuestion>
  bool ask() {
    return ioctl(socket_.number(), kQuestion, &request_) == 0;
  }

  template <auto kQuestion>
  in_addr addressFrom() {
    sockaddr_in answer{};
    if (ask<kQuestion>()) std::memcpy(&answer, &request_.ifr_addr, sizeof answer);
    return answer.sin_addr;
  }

  Descriptor socket_;
  ifreq request_{};
};

}  // namespace

std::optional<InterfaceInfo> activeInterface(std::string_view name) {
  const ProductInfo* product = productInfo();
  if (product == nullptr) return std::nullopt;
  return activeSystemInterface(product->interfaceName(name));
}

std::optional<InterfaceInfo> activeSystemInterface(std::string_view systemName) {
  KernelInterface kernel{systemName};
  if (!kernel.isActive()) return std::nullopt;
  const in_addr address = kernel.address();
  if (address.s_addr == INADDR_ANY) return std::nullopt;
  std::string routes;
  readFile(kRoutes, &routes);  // the address is worth reporting without a gateway too
  return InterfaceInfo{address, kernel.netmask(), defaultGateway(routes, systemName)};
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
