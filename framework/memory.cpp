// Makes all code of the program, also that of the libraries, use the heap for one request.
#include "platform/heap.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// Enough for most requests. The system provides its pages when they are written.
alignas(std::max_align_t) std::byte firstMemory[256 * 1024];
constinit camera::Heap heap(firstMemory, sizeof firstMemory);

}  // namespace

// C libraries differ in whether their declarations are noexcept.
extern "C" {

[[gnu::used]] void* malloc(std::size_t size) noexcept(noexcept(std::malloc(size))) {
  void* block = heap.allocate(size);
  if (block == nullptr) errno = ENOMEM;
  return block;
}

[[gnu::used]] void* realloc(void* block, std::size_t size) noexcept(noexcept(std::realloc(block, size))) {
  void* resized = heap.resize(block, size);
  if (resized == nullptr) errno = ENOMEM;
  return resized;
}

[[gnu::used]] void* calloc(std::size_t count, std::size_t size) noexcept(noexcept(std::calloc(count, size))) {
  std::size_t bytes = 0;
  void* block = __builtin_mul_overflow(count, size, &bytes) ? nullptr : malloc(bytes);
  return block == nullptr ? nullptr : std::memset(block, 0, bytes);
}

[[gnu::used]] void free(void* block) noexcept(noexcept(std::free(block))) {
  heap.release(block);
}
}

void* operator new(std::size_t size) {
  void* block = heap.allocate(size);
  if (block == nullptr) std::abort();
  return block;
}

void* operator new[](std::size_t size) {
  return operator new(size);
}

void operator delete(void* block) noexcept {
  heap.release(block);
}

void operator delete[](void* block) noexcept {
  heap.release(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
  heap.release(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
  heap.release(block);
}
