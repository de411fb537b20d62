// Network interfaces: which are active as the kernel says, and which gateway the routing table names.
#include "platform/if_info.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <net/route.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstring>

#include "platform/product_file.h"

namespace {

const char* product;  // null: unreadable

TEST(Interface, IsFoundUnderTheSystemsName) {
  struct Row {
    const char* product;
    const char* name;
    bool active;
  } const rows[] = {
      {"interface.eth0 = lo\n", "eth0", true},
      {"interface.eth0 = no-such-one\n", "eth0", false},
      {"interface.eth0 = lo-and-much-longer-than-a-name-can-be\n", "eth0", false},
      {"", "", false},
      {"no such key\n", "lo", false},
      {nullptr, "lo", false},
  };
  for (const Row& row : rows) {
    product = row.product;
    IF_INFO info{.index = -7, .flags = 0, .address = {}, .netmask = {}, .broadcast = {}, .gateway = {}};
    EXPECT_EQ(GetActiveIFInfo(row.name, &info), row.active) << row.name << " of " << (product ? product : "");
    EXPECT_EQ(info.index, row.active ? static_cast<int>(if_nametoindex("lo")) : -7);
    EXPECT_EQ(info.address.s_addr, htonl(row.active ? INADDR_LOOPBACK : 0));
    EXPECT_EQ(info.netmask.s_addr, htonl(row.active ? 0xFF000000 : 0));
    EXPECT_EQ((info.flags & IFF_LOOPBACK) != 0, row.active);
  }
}

void fill(sockaddr& target, const char* dotted) {
  sockaddr_in source{};
  source.sin_family = AF_INET;
  inet_pton(AF_INET, dotted, &source.sin_addr);
  std::memcpy(&target, &source, sizeof target);
}

void report() {
  IF_INFO info{};
  const bool active = camera::activeInterface("lo", &info);
  std::fprintf(stderr, "%s, ", active ? inet_ntoa(info.gateway) : "inactive");
}

// Takes the loopback interface of a network of its own, in a process of its own, through its states.
[[noreturn]] void walkThroughStates() {
  if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) _exit(1);
  const int kernel = socket(AF_INET, SOCK_DGRAM, 0);
  char name[] = "lo";
  ifreq request{};
  std::strcpy(request.ifr_name, name);
  report();
  request.ifr_flags = IFF_UP | IFF_RUNNING;
  ioctl(kernel, SIOCSIFFLAGS, &request);
  report();
  fill(request.ifr_addr, "10.0.0.5");
  ioctl(kernel, SIOCSIFADDR, &request);
  rtentry route{};
  fill(route.rt_dst, "0.0.0.0");
  fill(route.rt_genmask, "0.0.0.0");
  fill(route.rt_gateway, "10.0.0.1");
  route.rt_dev = name;
  route.rt_flags = RTF_UP | RTF_GATEWAY;
  ioctl(kernel, SIOCADDRT, &route);
  report();
  fill(request.ifr_addr, "0.0.0.0");
  ioctl(kernel, SIOCSIFADDR, &request);
  report();
  _exit(0);
}

TEST(Interface, IsActiveWhileUpWithAnAddress) {
  EXPECT_EXIT(walkThroughStates(), testing::ExitedWithCode(0), "inactive, 0.0.0.0, 10.0.0.1, inactive, ");
}

TEST(DefaultGateway, IsThatOfTheLowestMetric) {
  const std::string lan = "eth0\t0000A8C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\t0\t0\t0  \n";
  const std::string first = "eth0\t00000000\t0100A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0  \n";
  const std::string second = "eth0\t00000000\t0200A8C0\t0003\t0\t0\t20\t00000000\t0\t0\t0  \n";
  const std::pair<std::string, const char*> rows[] = {
      {"", "0.0.0.0"},
      {lan, "0.0.0.0"},
      {"Iface\tDestination\tGateway \tFlags\tRefCnt\n" + lan + first, "192.168.0.1"},
      {first + second + first, "192.168.0.2"},
      {"eth0\t00000000\t0300A8C0\t0003\t0\t0\t-1\t00000000\n" + first, "192.168.0.1"},
      {"eth0\t00000000\t00000000\t0001\t0\t0\t0\t00000000\n" + first, "0.0.0.0"},
      {"eth\t00000000\t0300A8C0\t0003\t0\t0\t0\t00000000\n", "0.0.0.0"},
      {"eth0\t00000000\t0300A8C0\t0003\t0\t0\t0\t00000080\n", "0.0.0.0"},
      {"eth0\t00000000\t0300A8C0\t0203\t0\t0\t0\t00000000\n", "0.0.0.0"},  // a route that rejects
      {"eth0\t00000000\t0300A8C0\t0003\n\neth0", "0.0.0.0"},
  };
  for (const auto& [routes, gateway] : rows) {
    EXPECT_STREQ(inet_ntoa(camera::defaultGateway(routes, "eth0")), gateway) << routes;
  }
}

}  // namespace

// Takes the place of the one that reads the camera's file.
bool camera::readProductFile(std::string* text) {
  if (product != nullptr) *text = product;
  return product != nullptr;
}
