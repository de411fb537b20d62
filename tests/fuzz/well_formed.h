// Whether a text is JSON, and whether a program's reply is one whole CGI reply.
#pragma once

#include <string>
#include <string_view>

#include "framework/utf8.h"

namespace camera::test {

// A recursive reader of one JSON value, stricter than most: no blanks, which replies do not have.
class JsonReader {
 public:
  explicit JsonReader(std::string_view text) : rest_{text} {}
  bool isWhole() { return value() && rest_.empty(); }

 private:
  bool take(std::string_view start) {
    const bool begins = rest_.starts_with(start);
    if (begins) rest_.remove_prefix(start.size());
    return begins;
  }
  bool number() {
    take("-");
    const std::size_t digits = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
    const bool isNumber = digits == 1 || (digits > 1 && rest_[0] != '0');
    rest_.remove_prefix(digits);
    return isNumber;
  }
  bool text() {
    if (!take("\"")) return false;
    while (!rest_.empty() && rest_[0] != '"') {
      if (static_cast<unsigned char>(rest_[0]) < 0x20) return false;
      const bool escapes = take("\\");
      if (escapes && (rest_.empty() || std::string_view{"\"\\/bfnrtu"}.find(rest_[0]) == rest_.npos))
        return false;
      rest_.remove_prefix(1);
    }
    return take("\"");
  }
  template <class Item>
  bool items(std::string_view end, Item item) {
    if (take(end)) return true;
    do
      if (!item()) return false;
    while (take(","));
    return take(end);
  }
  bool value() {
    if (take("{")) return items("}", [this] { return text() && take(":") && value(); });
    if (take("[")) return items("]", [this] { return value(); });
    if (rest_.starts_with('"')) return text();
    return take("true") || take("false") || take("null") || number();
  }

  std::string_view rest_;
};

// Splits a reply at the end of its header. The status is 0 if it is not one whole reply in the asked form.
struct WholeReply {
  int status = 0;
  std::string_view body{};
};

inline WholeReply wholeReply(std::string_view response, bool isJson) {
  const std::size_t end = response.find("\r\n\r\n");
  if (end == response.npos) return {};
  const std::string header = "\r\n" + std::string{response.substr(0, end + 2)};
  const std::string_view body = response.substr(end + 4);
  const bool hasLength =
      header.find("\r\nContent-Length: " + std::to_string(body.size()) + "\r\n") != header.npos;
  for (std::size_t at = 0; at + 2 < header.size();) {
    const std::size_t next = header.find("\r\n", at + 2);
    const std::string line = header.substr(at + 2, next - at - 2);
    if (line.find(": ") == line.npos || line.find_first_of("\r\n") != line.npos) return {};
    at = next;
  }
  const std::size_t status = header.find("\r\nStatus: ");
  const bool isText = (body.empty() || body.ends_with('\n')) && body.find('\r') == body.npos;
  const bool isWhole =
      isText && (!isJson || (isUtf8(body) && JsonReader{body.substr(0, body.size() - 1)}.isWhole()));
  if (!hasLength || !isWhole) return {};
  return {status == header.npos ? 200 : std::stoi(header.substr(status + 10)), body};
}

}  // namespace camera::test
