// Words and characters that several endpoints accept.
#pragma once

#include <span>

namespace camera {

// Words of a choice. A numeric field stores a word's position, or its number with storingNumber(); a text
// field stores the word.
using Words = std::span<const char* const>;

inline constexpr const char* kNoYes[] = {"no", "yes"};
inline constexpr const char* kOffOn[] = {"off", "on"};

// Extra characters of texts. Only kPrintableText has the space.
#define CAMERA_PUNCTUATION "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~"
#define CAMERA_FILE_NAME_PUNCTUATION "!#$%&'()+,-.;=@[]^_`{}~"
inline constexpr char kPunctuationText[] = CAMERA_PUNCTUATION;
inline constexpr char kPrintableText[] = " " CAMERA_PUNCTUATION;  // with letters and digits: printable ASCII
inline constexpr char kNameText[] = "_-.";                        // host names and names of things
inline constexpr char kFileNameText[] = CAMERA_FILE_NAME_PUNCTUATION;
inline constexpr char kPathText[] = CAMERA_FILE_NAME_PUNCTUATION "/\\";
#undef CAMERA_PUNCTUATION
#undef CAMERA_FILE_NAME_PUNCTUATION

static_assert(sizeof kPunctuationText == 33 && sizeof kFileNameText == 24 && sizeof kPathText == 26);

}  // namespace camera
