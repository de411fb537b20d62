// Parser of application/x-www-form-urlencoded texts.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace camera {

// Parameters of a request by name, in ascending byte order.
using Queries = std::map<std::string, std::string, std::less<>>;

// Adds the parameters of the text. "+" is a space, and a broken escape is kept as it is. A parameter without
// "=" has an empty value. If a name occurs twice, the last value counts. U+FFFD replaces broken UTF-8 in
// names, and in values unless keepsBytes is set.
void parseForm(std::string_view text, Queries& queries, bool keepsBytes = false);

// Appends the byte as "%XX".
void appendEscaped(char c, std::string* text);

// Bytes of the control character that begins at the position; 0 if there is none. U+0085, U+2028 and U+2029
// count too: some clients take them for line ends.
std::size_t controlSize(std::string_view text, std::size_t at);

// Appends a text for a line. If it holds a control character, these and every "%" become "%XX".
void appendShown(std::string_view text, std::string* line);

// Returns the name of an entry for a line, so that decoding "%XX" in it gives the name, and no other entry is
// shown like it.
std::string shownName(std::string_view name);

}  // namespace camera
