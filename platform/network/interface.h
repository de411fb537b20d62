// The camera's network interfaces, as the kernel reports them.
#pragma once

#include <netinet/in.h>

#include <optional>
#include <string_view>

namespace camera {

// IPv4 addresses in network byte order; 0.0.0.0 where there is none.
struct InterfaceInfo {
  in_addr address;
  in_addr netmask;
  in_addr gateway;
};

// The addresses of the interface that the camera calls "eth0", "ppp0" or "ra0"; the product information has
// the system's name of it. Nothing unless it is up, running and has an IPv4 address.
std::optional<InterfaceInfo> activeInterface(std::string_view name);

// The same for an interface by the system's own name.
std::optional<InterfaceInfo> activeSystemInterface(std::string_view systemName);

// The gateway of the interface's default route with the lowest metric, in network byte order; 0.0.0.0 without
// one. routes is the text of /proc/net/route.
in_addr defaultGateway(std::string_view routes, std::string_view systemName);

}  // namespace camera
