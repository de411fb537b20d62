// The heap of a process that serves one request: it hands out memory in steps of powers of two and gives
// nothing back to the system.
#pragma once

#include <cstddef>

namespace camera {

// Not thread-safe. Blocks are aligned for every type. A released block serves the next allocation of its
// step, so that a loop that allocates and releases does not grow.
class Heap {
 public:
  // Uses this memory first, which is aligned for every type, then the system's.
  constexpr Heap(std::byte* first, std::size_t size) : next_(first), left_(size) {}

  // Returns null if the system has no memory left.
  void* allocate(std::size_t size);
  // Moves the block only if its step is too small. With a null block, it allocates.
  void* resize(void* block, std::size_t size);
  void release(void* block);

 private:
  struct Block;
  Block* carve(unsigned order);

  static constexpr unsigned kOrders = 32;

  std::byte* next_;
  std::size_t left_;
  Block* released_[kOrders] = {};  // by order
};

}  // namespace camera
