// The reply: lines of key and value, or an error code and its message.
#pragma once

#include <string>
#include <string_view>

namespace camera {

class Reply {
 public:
  Reply();

  // Append one line. A control character in key or value is percent-encoded, so that no text can start a
  // line.
  void pair(std::string_view key, std::string_view value);
  void pair(std::string_view key, int value);

  // Appends lines that are complete.
  void append(std::string_view lines) { body_ += lines; }

  // Adds a header line, given without its end.
  void header(std::string_view line) { header_.append(line).append("\r\n"); }

  // Writes the whole response to standard output, in one write if the reader takes it: the lines with 200 OK,
  // or, in place of the lines, the code (307, 400, 404, 409 or 500) and the message, if it is not empty. A
  // reader that has gone is not an error, because what the request changed stays changed.
  void send() const;
  void sendFailure(int code, std::string_view message) const;

 private:
  std::string header_;
  std::string body_;
};

}  // namespace camera
