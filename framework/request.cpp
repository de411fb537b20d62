// Reads the request from the CGI variables and standard input.
#include "framework/request.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/text.h"

namespace camera {
namespace {

constexpr int kMostBytes = 64 * 1024;  // of a query, and of a body
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view{} : value;
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Ignores parameters of the content type, such as a charset.
bool isForm(std::string_view contentType) {
  std::string_view type = contentType.substr(0, contentType.find(';'));
  while (type.ends_with(' ') || type.ends_with('\t')) type.remove_suffix(1);
  while (type.starts_with(' ') || type.starts_with('\t')) type.remove_prefix(1);
  if (type.size() != kFormType.size()) return false;
  for (std::size_t i = 0; i < type.size(); ++i) {
    if (lower(type[i]) != kFormType[i]) return false;
  }
  return true;
}

// Fills the text from standard input. False if the input ends too early.
bool readInput(std::string* text) {
  for (std::size_t filled = 0; filled < text->size();) {
    const ssize_t count = read(STDIN_FILENO, text->data() + filled, text->size() - filled);
    if (count == 0 || (count < 0 && errno != EINTR)) return false;
    if (count > 0) filled += static_cast<std::size_t>(count);
  }
  return true;
}

// Returns an error message, or null.
const char* readBody(std::string* form) {
  const std::string_view stated = environment("CONTENT_LENGTH");
  int length = 0;
  if (!stated.empty() && !parseInteger(stated, 0, kMostBytes, &length)) return "body: at most 65536 bytes";
  if (length == 0) return nullptr;
  if (environment("REQUEST_METHOD") != "POST" || !isForm(environment("CONTENT_TYPE")))
    return "body: a POST of type application/x-www-form-urlencoded";
  form->resize(static_cast<std::size_t>(length));
  return readInput(form) ? nullptr : "body: shorter than its Content-Length";
}

}  // namespace

Request readRequest(bool keepsBytes) {
  Request request;
  const std::string_view query = environment("QUERY_STRING");
  if (query.size() > kMostBytes) {
    request.error = "query: at most 65536 bytes";
    return request;
  }
  std::string form;
  request.error = readBody(&form);
  if (request.error != nullptr) return request;
  parseForm(query, request.params, keepsBytes);
  parseForm(form, request.params, keepsBytes);
  return request;
}

}  // namespace camera
