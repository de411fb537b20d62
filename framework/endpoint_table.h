// The dispatcher's table: the endpoints by the names that the web server calls.
#pragma once

#include <span>
#include <string_view>

namespace camera {

struct EndpointEntry {
  std::string_view name;
  void (*serve)();  // reads the request, answers it and writes the reply to standard output
};

struct Api;

// What the tables know of an endpoint's class. Defined in handlers/endpoint.h and instantiated in the class's
// own file, so that the tables do not include the classes.
template <class Class>
struct EndpointOf {
  static void serve();        // serves one request with an endpoint of that class
  static const Api& api();    // its description
  static bool needsParams();  // whether it rejects a request without parameters
};

std::span<const EndpointEntry> endpointTable();

// The entry of the name, compared whole and by case; null for any other name.
const EndpointEntry* findEndpoint(std::string_view name);

}  // namespace camera
