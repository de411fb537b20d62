// Numbered names, such as "input1" and "out4".
#pragma once

#include <string>

#include "framework/checks.h"

namespace camera {

inline std::string numbered(std::string_view word, std::int64_t number) {
  return std::string{word}.append(Decimal(number).text());
}

}  // namespace camera
