// The formats of wireless keys.
#pragma once

#include <cstddef>
#include <string_view>

namespace camera {

// A format of WEP keys; each has its own length.
struct WepFormat {
  std::size_t length;  // in characters
  bool isHex;          // otherwise printable ASCII
  int bits;            // the key length that replies show
};

// Returns null if no WEP key has this length.
const WepFormat* wepFormat(std::string_view key);

// False for an empty key.
bool isWepKey(std::string_view key);
bool isWpaKey(std::string_view key);  // a passphrase, or 64 hexadecimal digits

}  // namespace camera
