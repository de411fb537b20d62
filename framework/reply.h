// The reply: lines of key and value, or an error code and a message.
#pragma once

#include <string>
#include <string_view>

namespace camera {

class Reply {
 public:
  Reply();

  // Append one line. Control characters are percent-encoded, so that no key or value can start a new line.
  void pair(std::string_view key, std::string_view value);
  void pair(std::string_view key, int value);

  // Appends complete lines.
  void append(std::string_view lines) { body_ += lines; }

  // Adds a header line, given without its line end.
  void header(std::string_view line) { header_.append(line).append("\r\n"); }

  // send writes the lines with 200 OK. sendFailure writes the code (307, 400, 404, 409 or 500) and the
  // message, unless that is empty. Both write the whole response to standard output, in one write if
  // possible. A failed write is ignored: the request has already taken effect.
  void send() const;
  void sendFailure(int code, std::string_view message) const;

 private:
  std::string header_;
  std::string body_;
};

}  // namespace camera
