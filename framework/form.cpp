// Parser of application/x-www-form-urlencoded texts.
#include "framework/form.h"

namespace camera {
namespace {

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string decode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '%' && i + 2 < text.size();
    const int high = escaped ? hexValue(text[i + 1]) : -1;
    const int low = escaped ? hexValue(text[i + 2]) : -1;
    if (high >= 0 && low >= 0) {
      decoded += static_cast<char>(high << 4 | low);
      i += 2;
    } else {
      decoded += text[i] == '+' ? ' ' : text[i];
    }
  }
  return decoded;
}

}  // namespace

void parseForm(std::string_view text, Queries& queries) {
  while (!text.empty()) {
    const std::size_t end = text.find('&');
    const std::string_view parameter = text.substr(0, end);
    text = end == text.npos ? std::string_view{} : text.substr(end + 1);
    if (parameter.empty()) continue;
    const std::size_t equals = parameter.find('=');
    const std::string_view value =
        equals == parameter.npos ? std::string_view{} : parameter.substr(equals + 1);
    queries.insert_or_assign(decode(parameter.substr(0, equals)), decode(value));
  }
}

}  // namespace camera
