// Base64 with "=" padding.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace camera {

std::string encodeBase64(std::string_view bytes);

// Returns nothing for a text that encodeBase64 would not produce: with white space, missing padding or stray
// bits.
std::optional<std::string> decodeBase64(std::string_view text);

}  // namespace camera
