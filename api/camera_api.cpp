// camera-api: prints the description of the HTTP interface for a product.
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "api/markdown.h"
#include "api/openapi.h"
#include "framework/endpoint_list.h"
#include "framework/endpoint_table.h"

namespace camera::api {
namespace {

struct Entry {
  const char* name;
  struct Functions {
    const Api& (*api)();
    bool (*needsParams)();
  } of;
};

template <class Class>
struct ApiOf {
  static constexpr Entry::Functions kValue{EndpointOf<Class>::api, EndpointOf<Class>::needsParams};
};

constexpr char kUsage[] =
    "usage: camera-api PRODUCT.CONF ACCESS                   prints an OpenAPI 3.1 description\n"
    "       camera-api PRODUCT.CONF ACCESS --markdown FILE   prints the Markdown file with its generated "
    "parts new\n";

std::optional<std::string> fileText(const char* path) {
  std::ifstream file{path, std::ios::binary};
  if (!file) {
    std::cerr << "camera-api: " << path << " cannot be read\n";
    return std::nullopt;
  }
  return std::string{std::istreambuf_iterator<char>{file}, {}};
}

int run(int count, char** arguments) {
  const bool isMarkdown = count == 5 && std::string_view{arguments[3]} == "--markdown";
  if (count != 3 && !isMarkdown) {
    std::cerr << kUsage;
    return 2;
  }
  const auto product = fileText(arguments[1]);
  const auto access = fileText(arguments[2]);
  const auto markdown = isMarkdown ? fileText(arguments[4]) : std::string{};
  ProductInfo info;
  if (!product || !access || !markdown) return 1;
  if (!info.parse(*product)) {
    std::cerr << "camera-api: " << arguments[1] << " is no product information\n";
    return 1;
  }
  const auto privileges = parseAccess(*access);
  std::vector<Described> endpoints;
  for (const Entry& entry : kEndpoints<Entry, ApiOf>) {
    const auto privilege = privileges.find(entry.name);
    endpoints.push_back({.name = entry.name,
                         .api = &entry.of.api(),
                         .needsParams = entry.of.needsParams(),
                         .privilege = privilege == privileges.end() ? "administrator" : privilege->second});
  }
  const std::string text = isMarkdown ? withGeneratedParts(*markdown, endpoints)
                                      : indented(openApi(endpoints, info, CAMERA_VERSION));
  std::cout << text << std::flush;
  return std::cout ? 0 : 1;
}

}  // namespace
}  // namespace camera::api

int main(int argc, char** argv) {
  return camera::api::run(argc, argv);
}
