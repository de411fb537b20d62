// Network interfaces: which are active, and which gateway the routing table names; and the wireless signal.
#include "platform/network/interface.h"

#include <arpa/inet.h>
#include <net/route.h>

#include <bit>
#include <regex>

#include "platform/network/site_survey.h"
#include "platform/product/product_info.h"
#include "tests/support/own_network.h"

namespace camera {
namespace {

std::string productText;

TEST(Interface, IsFoundUnderTheSystemsName) {
  for (const char* none : {"interface.eth0 = no-such-one\n", "interface.eth0 = lo\nno such key\n",
                           "interface.eth0 = lo-and-much-longer-than-a-name-can-be\n"}) {
    productText = none;
    EXPECT_FALSE(activeInterface("eth0")) << none;
  }
  productText = "interface.eth0 = lo\n";
  const auto info = activeInterface("eth0");
  ASSERT_TRUE(info);
  EXPECT_EQ(info->address.s_addr, htonl(INADDR_LOOPBACK));
  EXPECT_EQ(info->netmask.s_addr, htonl(0xFF000000));
}

sockaddr address(const char* dotted) {
  return std::bit_cast<sockaddr>(sockaddr_in{AF_INET, 0, {inet_addr(dotted)}, {}});
}

// Takes the loopback interface of its own network through its states. For a child process only.
[[noreturn]] void walkThroughStates() {
  test::enterOwnNetwork();
  const auto report = [kernel = socket(AF_INET, SOCK_DGRAM, 0)](int change, void* to) {
    ioctl(kernel, change, to);
    const auto info = activeSystemInterface("lo");
    std::fprintf(stderr, "%s, ", info ? inet_ntoa(info->gateway) : "inactive");
  };
  ifreq request{{"lo"}, {}};
  report(SIOCSIFFLAGS, &request);
  request.ifr_flags = IFF_UP | IFF_RUNNING;
  report(SIOCSIFFLAGS, &request);
  request.ifr_addr = address("10.0.0.5");
  report(SIOCSIFADDR, &request);
  rtentry route{};
  route.rt_dst = route.rt_genmask = address("0.0.0.0");
  route.rt_gateway = address("10.0.0.1");
  route.rt_dev = request.ifr_name;
  route.rt_flags = RTF_UP | RTF_GATEWAY;
  report(SIOCADDRT, &route);
  request.ifr_addr = address("0.0.0.0");
  report(SIOCSIFADDR, &request);
  _exit(0);
}

TEST(Interface, IsActiveWhileUpWithAnAddress) {
  EXPECT_EXIT(walkThroughStates(), testing::ExitedWithCode(0),
              "inactive, 0.0.0.0, 0.0.0.0, 10.0.0.1, inactive, ");
}

TEST(DefaultGateway, IsThatOfTheLowestMetric) {
  const std::string first = "eth0\t00000000\t0100A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0  \n";
  const std::string second = "eth0\t00000000\t0200A8C0\t0003\t0\t0\t20\t00000000\t0\t0\t0  \n";
  const std::pair<std::string, const char*> rows[] = {
      {first + second + first, "192.168.0.2"},
      {"eth0\t00000000\t0300A8C0\t0003\t0\t0\t-1\t00000000\n" + first, "192.168.0.1"},
      {first + "eth0\t00000000\t0300A8C0\t0003\t0\t0\t100\t00000000\n", "192.168.0.1"},
      {"eth0\t00000000\t00000000\t0001\t0\t0\t0\t00000000\n" + first, "0.0.0.0"},
      {"eth0\t0000A8C0\t0300A8C0\t0003\t0\t0\t0\t00000000\n", "0.0.0.0"},
      {"eth\t00000000\t0300A8C0\t0003\t0\t0\t0\t00000000\n", "0.0.0.0"},
      {"eth0\t00000000\t0300A8C0\t0003\t0\t0\t0\t00000080\n", "0.0.0.0"},
      {"eth0\t00000000\t0300A8C0\t0203\t0\t0\t0\t00000000\n", "0.0.0.0"},  // a route that rejects
      {"eth0\t00000000\t0300A8C0\t0003\n\neth0", "0.0.0.0"}};
  for (auto [routes, gateway] : rows) {
    // The kernel prints addresses as the machine's words.
    if (std::endian::native == std::endian::big)
      routes = std::regex_replace(routes, std::regex("0([123])00A8C0"), "C0A8000$1");
    EXPECT_STREQ(inet_ntoa(defaultGateway(routes, "eth0")), gateway) << routes;
  }
}

TEST(Signal, IsOneInteger) {
  const std::pair<const char*, int> rows[] = {{"-42\n", -42},   {"7", 7},          {"", 0},
                                              {"-42 dBm\n", 0}, {"-42\n-43\n", 0}, {"-2147483649", 0}};
  for (const auto& [text, rssi] : rows) EXPECT_EQ(parseRssi(text), rssi) << text;
}

}  // namespace

// Replaces the one that reads the camera's file.
const ProductInfo* productInfo() {
  static std::optional<ProductInfo> product;
  return product.emplace().parse(productText) ? &*product : nullptr;
}

}  // namespace camera
