// The parameter of endpoints that act only on NAME=go.
#pragma once

#include "framework/params.h"

namespace camera {

struct Confirmation {
  std::int32_t go;
};
inline constexpr const char* kGo[] = {"go"};

constexpr auto confirmationParam(const char* name) {
  return choiceParam<&Confirmation::go>(name, kGo).required();
}

}  // namespace camera
