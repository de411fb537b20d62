// The heap of a process that serves one request.
#include "platform/heap.h"

#include <sys/mman.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

namespace camera {

// Stands before the memory that the caller gets.
struct alignas(std::max_align_t) Heap::Block {
  Block* next;     // while it is released
  unsigned order;  // it has 2 to that power bytes, with this header
};

void* Heap::allocate(std::size_t size) {
  constexpr std::size_t kSmallest = 32;
  const unsigned order = static_cast<unsigned>(std::bit_width((size + sizeof(Block) - 1) | (kSmallest - 1)));
  if (size > PTRDIFF_MAX || order >= kOrders) return nullptr;
  Block* block = released_[order];
  if (block == nullptr) {
    block = carve(order);
  } else {
    released_[order] = block->next;
  }
  return block == nullptr ? nullptr : block + 1;
}

void* Heap::resize(void* block, std::size_t size) {
  if (block == nullptr) return allocate(size);
  const std::size_t capacity = (std::size_t{1} << (static_cast<Block*>(block) - 1)->order) - sizeof(Block);
  if (size <= capacity) return block;
  void* larger = allocate(size);
  if (larger == nullptr) return nullptr;
  std::memcpy(larger, block, capacity);
  release(block);
  return larger;
}

void Heap::release(void* block) {
  if (block == nullptr) return;
  Block* header = static_cast<Block*>(block) - 1;
  header->next = std::exchange(released_[header->order], header);
}

// Cuts a block off the memory that is left. What is too small for it stays unused.
Heap::Block* Heap::carve(unsigned order) {
  constexpr std::size_t kMoreBytes = std::size_t{256} * 1024;
  const std::size_t size = std::size_t{1} << order;
  if (size > left_) {
    const std::size_t more = std::max(size, kMoreBytes);
    void* memory = mmap(nullptr, more, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return nullptr;
    next_ = static_cast<std::byte*>(memory);
    left_ = more;
  }
  auto* block = reinterpret_cast<Block*>(std::exchange(next_, next_ + size));
  left_ -= size;
  block->order = order;
  return block;
}

}  // namespace camera
