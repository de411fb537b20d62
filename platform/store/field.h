// The kinds of fields in settings records and in the states of endpoints.
#pragma once

#include <cstdint>

namespace camera {

enum class FieldKind : std::uint8_t {
  kByte,      // unsigned 8-bit number
  kInteger,   // signed 32-bit number
  kText,      // NUL-terminated text in a fixed-size array
  kReserved,  // bytes that no endpoint uses or changes; only in records
  kView,      // part of a request's text: a std::string_view; only in states
};

// The bounds of a number, or of a text's length in bytes.
struct Bounds {
  std::int32_t min;
  std::int32_t max;
};

// Has no definition: a constant expression that calls it does not compile, and the compiler shows the reason.
void failToCompile(const char* reason);

}  // namespace camera
