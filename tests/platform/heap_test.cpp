// The heap of a process that serves one request.
#include "platform/heap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace camera {
namespace {

constexpr std::size_t kFirst = 4096;

struct Fixture {
  alignas(std::max_align_t) std::byte first[kFirst];
  Heap heap{first, kFirst};
};

// Each block is filled with a byte of its own, so that an overlap shows.
TEST(Heap, KeepsBlocksApartWhileTheyComeAndGo) {
  struct Held {
    char* block;
    std::string content;
  };
  Fixture fixture;
  std::mt19937 random{1};  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same run each time
  std::vector<Held> held;
  for (int round = 0; round < 20'000; ++round) {
    const std::size_t size = random() % (random() % 100 == 0 ? 300'000 : 300);
    const char fill = static_cast<char>(round);
    if (held.size() < 50 || random() % 2 == 0) {
      held.push_back({static_cast<char*>(fixture.heap.allocate(size)), std::string(size, fill)});
    } else if (Held& one = held[random() % held.size()]; random() % 2 == 0) {
      one.block = static_cast<char*>(fixture.heap.resize(one.block, size));
      const std::size_t kept = std::min(size, one.content.size());
      ASSERT_EQ(std::string(one.block, kept), one.content.substr(0, kept));
      one.content.assign(size, fill);
    } else {
      ASSERT_EQ(std::string(one.block, one.content.size()), one.content);
      fixture.heap.release(one.block);
      std::swap(one, held.back());
      held.pop_back();
      continue;
    }
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(held.back().block) % alignof(std::max_align_t), 0U);
    for (Held& one : held) std::copy(one.content.begin(), one.content.end(), one.block);
  }
}

TEST(Heap, DoesNotGrowInALoop) {
  Fixture fixture;
  for (int i = 0; i < 1000; ++i) {
    void* block = fixture.heap.allocate(1000);
    EXPECT_TRUE(block >= fixture.first && block < fixture.first + kFirst);
    fixture.heap.release(block);
  }
  fixture.heap.release(nullptr);
}

TEST(Heap, HasNoBlockOfAnImpossibleSize) {
  Fixture fixture;
  constexpr std::uint64_t kTebibyte = std::uint64_t{1} << 40;
  const auto huge = static_cast<std::size_t>(std::min<std::uint64_t>(kTebibyte, SIZE_MAX / 2));
  for (const std::size_t size : {SIZE_MAX, SIZE_MAX / 2, huge})
    EXPECT_EQ(fixture.heap.allocate(size), nullptr) << size;
}

}  // namespace
}  // namespace camera
