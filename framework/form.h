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

}  // namespace camera
