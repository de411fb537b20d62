// The password of an account that the camera uses, as the action endpoints take and show it: in base64.
#pragma once

#include "framework/base64.h"
#include "framework/params.h"

namespace camera {

// The longest password in base64, with its NUL.
inline constexpr std::size_t kEncodedSize = 41;

inline bool isEncodedPassword(std::string_view encoded) {
  const auto password = decodeBase64(encoded);
  return password && consistsOf(*password, kAlnum, kPunctuationText);
}

// Its field holds the encoded text; an empty one is the empty password.
template <auto... kPath>
constexpr auto encodedPasswordParam(const char* name) {
  return textParam<kPath...>(name, 0, kEncodedSize - 1, "+/=")
      .also(isEncodedPassword, "0 to 30 letters, digits, punctuation, in base64");
}

template <std::size_t N>
void showPassword(const char (&stored)[N], char (&encoded)[kEncodedSize]) {
  if (!copyText(encoded, sizeof encoded, encodeBase64(textOf(stored)))) *encoded = '\0';
}

template <std::size_t N>
void storePassword(const char (&encoded)[kEncodedSize], char (&stored)[N]) {
  if (const auto password = decodeBase64(encoded)) setText(stored, *password);
}

}  // namespace camera
