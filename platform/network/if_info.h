// What the kernel says of the camera's network interfaces.
#pragma once

#include <netinet/in.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

// An interface's addresses, in network byte order; 0.0.0.0 where there is none. What is reserved is 0.
struct IF_INFO {
  std::uint8_t reserved0[8];
  in_addr address;
  in_addr netmask;
  std::uint8_t reserved1[4];
  in_addr gateway;
};
static_assert(offsetof(IF_INFO, address) == 8 && offsetof(IF_INFO, netmask) == 12);
static_assert(offsetof(IF_INFO, gateway) == 20);

// Fills info when the camera's interface of that name ("eth0", "ppp0", "ra0"; the product information may say
// that the system knows it by another) is up, running and has an IPv4 address. Otherwise false, and info is
// untouched.
bool GetActiveIFInfo(const char* name, IF_INFO* info);

namespace camera {

// The same of an interface by the system's own name.
bool activeInterface(std::string_view systemName, IF_INFO* info);

// The gateway of the interface's default route of the lowest metric, in network byte order; 0.0.0.0 without
// one. routes is the text of /proc/net/route.
in_addr defaultGateway(std::string_view routes, std::string_view systemName);

}  // namespace camera
