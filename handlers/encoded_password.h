// Passwords of accounts, which requests and replies hold in base64.
#pragma once

#include <optional>

#include "framework/base64.h"
#include "framework/params.h"

namespace camera {

// Bytes of the longest password in base64, its NUL included.
inline constexpr std::size_t kEncodedSize = 41;

// Returns nothing unless the text is the base64 of 0 to 30 letters, digits and punctuation.
inline std::optional<std::string> decodePassword(std::string_view encoded) {
  std::optional<std::string> password = decodeBase64(encoded);
  const bool isAccepted =
      password && hasLength(*password, 0, 30) && consistsOf(*password, kAlnum, kPunctuationText);
  return isAccepted ? password : std::nullopt;
}

inline bool isEncodedPassword(std::string_view encoded) {
  return decodePassword(encoded).has_value();
}

// For the message that rejects an encoded password.
inline const char* encodingFault(std::string_view encoded) {
  return decodeBase64(encoded) ? "" : "not base64";
}

// The field holds the encoded text, which is empty for the empty password.
template <auto... kPath>
constexpr auto encodedPasswordParam(const char* name) {
  return textParam<kPath...>(name, 0, kEncodedSize - 1, "+/=")
      .also(isEncodedPassword, "0 to 30 letters, digits, punctuation, in base64")
      .naming(encodingFault)
      .secret();
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
