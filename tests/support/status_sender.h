// Sends status packages and other datagrams, as the camera's daemons and other programs would.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <bit>

#include "platform/daemons/status_receiver.h"
#include "platform/little_endian.h"

namespace camera::test {

inline StatusPackage package(std::uint32_t event, std::int32_t value = 0) {
  StatusPackage result{};
  result.event = event;
  result.value = value;
  return result;
}

// Sends over the loopback interface, as if from the source address.
class Sender {
 public:
  explicit Sender(const char* source = "127.0.0.1") {
    const int yes = 1;
    const in_addr loopback{htonl(INADDR_LOOPBACK)};
    sockaddr_in address{AF_INET, 0, {inet_addr(source)}, {}};
    EXPECT_EQ(setsockopt(socket_.number(), IPPROTO_IP, IP_TRANSPARENT, &yes, sizeof yes), 0);
    EXPECT_EQ(setsockopt(socket_.number(), IPPROTO_IP, IP_MULTICAST_IF, &loopback, sizeof loopback), 0);
    EXPECT_EQ(bind(socket_.number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  }
  void send(const void* data, std::size_t size, const char* to = kStatusGroup) const {
    const sockaddr_in address{AF_INET, htons(kStatusPort), {inet_addr(to)}, {}};
    EXPECT_EQ(
        sendto(socket_.number(), data, size, 0, reinterpret_cast<const sockaddr*>(&address), sizeof address),
        static_cast<ssize_t>(size));
  }
  void send(const StatusPackage& what) const {
    auto words = std::bit_cast<std::array<std::uint32_t, sizeof what / sizeof(std::uint32_t)>>(what);
    for (std::uint32_t& word : words) storeLittle(&word, word);
    send(words.data(), sizeof words);
  }

 private:
  Descriptor socket_{socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
};

}  // namespace camera::test
