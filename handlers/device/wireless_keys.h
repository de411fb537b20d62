// What a wireless key must look like.
#pragma once

#include <cstddef>
#include <string_view>

namespace camera {

// One of the four shapes of a WEP key, which its length alone tells.
struct WepFormat {
  std::size_t length;  // in characters
  bool isHex;          // or else printable
  const char* bits;    // of the cipher, as clients name it
};

// Null when no WEP key has this length.
const WepFormat* wepFormat(std::string_view key);

// An empty key is none.
bool isWepKey(std::string_view key);
bool isWpaKey(std::string_view key);  // a WPA passphrase, or the 64 hexadecimal digits made from one

}  // namespace camera
