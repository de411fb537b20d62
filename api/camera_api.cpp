// camera-api: prints the description of the HTTP interface for a product.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "api/markdown.h"
#include "api/openapi.h"
#include "framework/endpoint_list.h"
#include "framework/endpoint_table.h"

namespace camera {

struct Entry {
  const char* name;
  const Api& (*api)();
};

// Each entry also declares the class that it names.
#define CAMERA_ENTRY(name, Class) {name, EndpointOf<class Class>::api},
constexpr Entry kEntries[] = {CAMERA_ENDPOINTS(CAMERA_ENTRY)};
#undef CAMERA_ENTRY

}  // namespace camera

namespace camera::api {
namespace {

constexpr char kUsage[] =
    "usage: camera-api PRODUCT.CONF ACCESS                   prints an OpenAPI 3.1 description\n"
    "       camera-api PRODUCT.CONF ACCESS --markdown FILE   prints the Markdown file with its generated "
    "parts new\n";

std::optional<std::string> fileText(const char* path) {
  std::ifstream file{path, std::ios::binary};
  if (!file) {
    std::fprintf(stderr, "camera-api: %s cannot be read\n", path);
    return std::nullopt;
  }
  return std::string{std::istreambuf_iterator<char>{file}, {}};
}

int run(int count, char** arguments) {
  const bool isMarkdown = count == 5 && std::string_view{arguments[3]} == "--markdown";
  if (count != 3 && !isMarkdown) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  const auto product = fileText(arguments[1]);
  const auto access = fileText(arguments[2]);
  const auto markdown = isMarkdown ? fileText(arguments[4]) : std::string{};
  ProductInfo info;
  if (!product || !access || !markdown) return 1;
  if (!info.parse(*product)) {
    std::fprintf(stderr, "camera-api: %s is no product information\n", arguments[1]);
    return 1;
  }
  const auto privileges = parseAccess(*access);
  std::vector<Described> endpoints;
  for (const Entry& entry : kEntries) {
    const auto privilege = privileges.find(entry.name);
    endpoints.push_back({.name = entry.name,
                         .api = &entry.api(),
                         .privilege = privilege == privileges.end() ? "administrator" : privilege->second});
  }
  const std::string text = isMarkdown ? withGeneratedParts(*markdown, endpoints)
                                      : indented(openApi(endpoints, info, CAMERA_VERSION));
  std::fputs(text.c_str(), stdout);
  return 0;
}

}  // namespace
}  // namespace camera::api

int main(int argc, char** argv) {
  return camera::api::run(argc, argv);
}
