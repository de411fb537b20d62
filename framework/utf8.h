// UTF-8 texts.
#pragma once

#include <string>
#include <string_view>

namespace camera {

// Replaces broken UTF-8 by U+FFFD, so that every stored text can be shown.
std::string decodeUtf8(std::string_view text);

// True if the text is UTF-8: without surrogates, overlong sequences and numbers above U+10FFFF.
bool isUtf8(std::string_view text);

// Appends the character in UTF-8. The code is not a surrogate, and at most 0x10FFFF.
void appendUtf8(char32_t code, std::string* text);

}  // namespace camera
