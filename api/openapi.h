// The description of the HTTP interface in OpenAPI 3.1.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "handlers/api.h"

namespace camera::api {

// An endpoint, for one product.
struct Described {
  std::string_view name;  // "network.cgi"
  const Api* api;
  bool needsParams;       // it rejects a request without parameters
  std::string privilege;  // "any", "administrator" or the privilege that an ordinary account needs
};

// Whom the web server lets call an endpoint, by its name. The text is that of virtual-camera/access.
std::map<std::string, std::string, std::less<>> parseAccess(std::string_view text);

// Whether the product has the endpoint.
bool isOffered(const Api& api, const ProductInfo& product);

// The parameter's meaning, and when a request needs it.
std::string meaningOf(const ApiParam& param, const Described& described);

// The members of a parameter's JSON schema on this camera, without braces; empty if the camera has no such
// parameter.
std::string schemaOf(const ApiParam& param, const Api& api, const ProductInfo& product);

// The endpoints that the product has, as JSON.
std::string openApi(std::span<const Described> endpoints, const ProductInfo& product,
                    std::string_view version);

// The same JSON, in lines that are indented.
std::string indented(std::string_view json);

// The subsystem's name, for readers.
const char* nameOf(Subsystem subsystem);

}  // namespace camera::api
