// Parser of application/x-www-form-urlencoded texts.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace camera {

// Parameters of a request by name, in ascending byte order.
using Queries = std::map<std::string, std::string, std::less<>>;

// Adds the parameters of the text. "+" is a space, a broken escape stays as it is, of a name given twice the
// last value stays, a parameter without "=" has an empty value. Broken UTF-8 becomes U+FFFD, unless the bytes
// of values are to stay.
void parseForm(std::string_view text, Queries& queries, bool keepsBytes = false);

// Appends the byte as "%XX".
void appendEscaped(char c, std::string* text);

}  // namespace camera
