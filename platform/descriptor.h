// File descriptors: a class that closes one, and transfers that survive interruptions and short counts. Each
// transfer returns 0 or an errno value.
#pragma once

#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace camera {

// Owns a descriptor; -1 is none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    other.close();
    return *this;
  }
  ~Descriptor() { close(); }

  bool isOpen() const { return number_ >= 0; }
  int number() const { return number_; }
  int release() { return std::exchange(number_, -1); }
  void close() {
    if (isOpen()) ::close(release());
  }

 private:
  int number_;
};

// One read of at most size bytes. Of a regular file it reads fewer only at the end.
int readOnce(int descriptor, void* buffer, std::size_t size, std::size_t* length);

// Appends everything up to the end of the file.
int readAll(int descriptor, std::string* text);

int writeAll(int descriptor, const void* data, std::size_t size);

// False if the descriptor is not ready for the events of poll() within that time; true also after a signal.
[[gnu::cold]] bool waitUntilReady(int descriptor, short events, std::chrono::milliseconds patience);

// Writes to a descriptor that does not block. False if the reader has gone, or reads nothing for that time.
bool writeInTime(int descriptor, std::string_view text, std::chrono::milliseconds patience);

}  // namespace camera
