// The words and characters against which more than one endpoint matches its values.
#pragma once

#include <span>

namespace camera {

// Words of a choice; the position of a word is the value that is stored.
using Words = std::span<const char* const>;

inline constexpr const char* kNoYes[] = {"no", "yes"};
inline constexpr const char* kOffOn[] = {"off", "on"};
inline constexpr const char* kStopDel[] = {"stop", "del"};

// Extra characters as texts, for the checks that take a text of them. The space is in none.
#define CAMERA_PUNCTUATION "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~"
inline constexpr char kPunctuationText[] = CAMERA_PUNCTUATION;
inline constexpr char kPrintableText[] = " " CAMERA_PUNCTUATION;  // with letters and digits: printable ASCII
inline constexpr char kNameText[] = "_-.";                        // of host names and names of things
#define CAMERA_FILE_NAME_PUNCTUATION "!#$%&'()+,-.;=@[]^_`{}~"
inline constexpr char kFileNameText[] = CAMERA_FILE_NAME_PUNCTUATION;    // of file names
inline constexpr char kPathText[] = CAMERA_FILE_NAME_PUNCTUATION "/\\";  // of folder paths

// Extra characters as tables of one-character texts, for CommonAPI::isAlnumStr.
inline constexpr const char* kPunctuation[] = {"!", "\"", "#", "$", "%", "&", "'", "(", ")", "*", "+",
                                               ",", "-",  ".", "/", ":", ";", "<", "=", ">", "?", "@",
                                               "[", "\\", "]", "^", "_", "`", "{", "|", "}", "~"};
inline constexpr const char* kHostCharacters[] = {"-", ".", "_"};
// What a folder path may hold: all punctuation but " * : < > ? |
inline constexpr const char* kPathCharacters[] = {"!", "#", "$", "%", "&", "'", "(", ")", "+",
                                                  ",", "-", ".", "/", ";", "=", "@", "[", "\\",
                                                  "]", "^", "_", "`", "{", "}", "~"};
// What a file name may hold: what a path may, but neither slash nor backslash.
inline constexpr const char* kFileNameCharacters[] = {"!", "#", "$", "%", "&", "'", "(", ")",
                                                      "+", ",", "-", ".", ";", "=", "@", "[",
                                                      "]", "^", "_", "`", "{", "}", "~"};

static_assert(std::size(kPunctuation) == 32 && sizeof(kPunctuationText) == 33);
static_assert(std::size(kPathCharacters) == 25 && std::size(kFileNameCharacters) == 23);
static_assert(sizeof(kPathText) == 26 && sizeof(kFileNameText) == 24);

}  // namespace camera
