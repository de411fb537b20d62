// Numbers in files and messages: little-endian on every machine, with any alignment.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace camera {

template <class Number>
Number loadLittle(const void* bytes) {
  if constexpr (std::endian::native == std::endian::little) {  // compilers do not see this in the loop
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
  }
  std::make_unsigned_t<Number> value = 0;
  for (std::size_t i = sizeof value; i-- > 0;) {
    value = static_cast<decltype(value)>(std::uint64_t{value} << 8U |
                                         static_cast<const unsigned char*>(bytes)[i]);
  }
  return static_cast<Number>(value);
}

template <class Number>
void storeLittle(void* bytes, Number number) {
  auto value = static_cast<std::uint64_t>(number);
  for (std::size_t i = 0; i < sizeof number; ++i, value >>= 8U) {
    static_cast<unsigned char*>(bytes)[i] = static_cast<unsigned char>(value);
  }
}

// A number in a struct whose bytes are those of a message: without alignment, and so without padding.
template <class Number>
class Little {
 public:
  Little() = default;
  Little(Number number) { storeLittle(bytes_, number); }
  operator Number() const { return loadLittle<Number>(bytes_); }

 private:
  unsigned char bytes_[sizeof(Number)];
};

}  // namespace camera
