// Base64 with "=" fill, as passwords travel.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace camera {

std::string encodeBase64(std::string_view bytes);

// Nothing for a text that encodeBase64 does not write: white space, missing fill or stray bits.
std::optional<std::string> decodeBase64(std::string_view text);

}  // namespace camera
