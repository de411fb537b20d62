// Names of things that a product has several of: "input1", "out4".
#pragma once

#include <string>

#include "framework/checks.h"

namespace camera {

inline std::string numbered(std::string_view word, std::int64_t number) {
  return std::string{word}.append(Decimal(number).text());
}

}  // namespace camera
