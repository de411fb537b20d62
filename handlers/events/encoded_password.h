// Passwords in base64, as the action endpoints accept and report them.
#pragma once

#include "framework/base64.h"
#include "framework/params.h"

namespace camera {

// Bytes of the longest password in base64, its NUL included.
inline constexpr std::size_t kEncodedSize = 41;

inline bool isEncodedPassword(std::string_view encoded) {
  const auto password = decodeBase64(encoded);
  return password && consistsOf(*password, kAlnum, kPunctuationText);
}

// The field holds the encoded text, which is empty for the empty password.
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
