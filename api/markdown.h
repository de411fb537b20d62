// The generated parts of docs/api.md: a sentence, the records and the tables of each endpoint.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "api/openapi.h"

namespace camera::api {

// Returns the text with the lines between "<!-- generated -->" and "<!-- end -->" replaced, in the sections
// that an endpoint's name heads ("## network.cgi").
std::string withGeneratedParts(std::string_view text, std::span<const Described> endpoints);

}  // namespace camera::api
