// The status channel: packages that the camera's daemons send by multicast to all listeners.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

#include "platform/descriptor.h"

namespace camera {

inline constexpr char kStatusGroup[] = "231.1.1.1";
inline constexpr std::uint16_t kStatusPort = 8888;

// A status package: 24 words, little-endian in the datagram.
struct StatusPackage {
  std::uint32_t event;  // bits: the kind of report
  std::uint32_t flags;  // bits, or a result, depending on the event
  std::uint32_t unused2[2];
  std::int32_t value;  // a number: motion value or sound level
  std::uint32_t unused5;
  std::int32_t value2;  // a number: output state
  std::uint32_t unused7[17];
};
static_assert(sizeof(StatusPackage) == 96);
static_assert(offsetof(StatusPackage, value) == 16 && offsetof(StatusPackage, value2) == 24);

// Any number of processes may listen at the same time. Each receives all packages that arrive after its open.
class StatusReceiver {
 public:
  // Joins the group on the loopback interface and on every other one that is up and does multicast. Called
  // once. Without a socket, which the log reports, wait only sleeps.
  void open();

  // Becomes readable when datagrams arrive; -1 without a socket.
  int descriptor() const { return socket_.number(); }

  // Sleeps until there is a package from this machine whose event has one of the bits. False, with the
  // package untouched, if there is none in that time.
  bool wait(std::uint32_t events, StatusPackage* package, std::chrono::milliseconds time);

  // Whole seconds, by a clock that nobody can set.
  int secondsSinceOpen() const;

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t kBatch = 16;

  bool fetch(Clock::time_point end);

  Descriptor socket_;
  Clock::time_point begin_;
  std::array<StatusPackage, kBatch> batch_;
  std::size_t next_ = 0;
  std::size_t count_ = 0;
  Clock::time_point nextFetch_;
};

}  // namespace camera
