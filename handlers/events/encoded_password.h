// The password of an account that the camera uses, as the action endpoints take and show it: in base64.
#pragma once

#include "framework/params.h"

namespace camera {

// The longest password in base64, with its NUL.
inline constexpr std::size_t kEncodedSize = 41;

inline bool decodePassword(std::string_view encoded, char (&password)[kEncodedSize]) {
  const int length = CommonAPI::b64_decode(encoded, password, sizeof password);
  return length >= 0 && consistsOf({password, static_cast<std::size_t>(length)}, kAlnum, kPunctuationText);
}

inline bool isEncodedPassword(std::string_view encoded) {
  char password[kEncodedSize];
  return decodePassword(encoded, password);
}

// Its field holds the encoded text; an empty one is the empty password.
template <auto... kPath>
constexpr auto encodedPasswordParam(const char* name) {
  return textParam<kPath...>(name, 0, kEncodedSize - 1, "+/=")
      .also(isEncodedPassword, "0 to 30 letters, digits, punctuation, in base64");
}

template <std::size_t N>
void showPassword(const char (&stored)[N], char (&encoded)[kEncodedSize]) {
  if (CommonAPI::b64_encode(stored, strnlen(stored, N), encoded, sizeof encoded) < 0) *encoded = '\0';
}

template <std::size_t N>
void storePassword(const char (&encoded)[kEncodedSize], char (&stored)[N]) {
  char password[kEncodedSize];
  if (decodePassword(encoded, password)) setText(stored, password);
}

}  // namespace camera
