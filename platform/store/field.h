// What a field holds, in settings records and in the states of endpoints.
#pragma once

#include <cstdint>

namespace camera {

enum class FieldKind : std::uint8_t {
  kByte,      // unsigned 8-bit number
  kInteger,   // signed 32-bit number
  kText,      // NUL-terminated text in a fixed-size array
  kReserved,  // bytes that no endpoint uses; they pass through unchanged; only in records
  kView,  // part of a request's text, a std::string_view that is valid during the request; never in records
};

// Of a number its value, of a text its length in bytes.
struct Bounds {
  std::int32_t min;
  std::int32_t max;
};

}  // namespace camera
