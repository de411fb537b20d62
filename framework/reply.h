// The reply: lines of key and value or a JSON object, or an error code and a message.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "framework/json.h"

namespace camera {

class Reply {
 public:
  Reply();

  // Makes this a JSON reply. Before the first member.
  void useJson() { isJson_ = true; }
  bool isJson() const { return isJson_; }

  // Append one line. Control characters are percent-encoded (appendShown), so that no key or value can start
  // a new line. In JSON they add a member.
  void pair(std::string_view key, std::string_view value);
  void pair(std::string_view key, int value);
  // Adds a word that the client reads as a number, such as a volume.
  void number(std::string_view key, std::string_view digits);

  // Adds a list that has commas between its items. In JSON it is an array of that kind.
  void list(std::string_view key, std::string_view items, ListOf kind = ListOf::kTexts);

  // Adds a member that has no such form in text. Only for JSON.
  void value(std::string_view key, std::string_view json) { object_.addValue(key, json); }
  // The members as a JSON object.
  std::string json() const { return object_.text(); }

  // Appends complete lines. Only for text.
  void append(std::string_view lines);

  // Tells whoever passes the reply on not to store it.
  void forbidStoring() { isSecret_ = true; }

  // Adds a header line, given without its line end.
  void header(std::string_view line) { header_.append(line).append("\r\n"); }

  // send writes the lines with 200 OK. sendFailure writes the code (307, 400, 403, 404, 409, 500 or 503) and
  // the message, unless that is empty; a line shows the parameter at fault before the message. Both write the
  // whole response to standard output, in one write if possible. A failed write is ignored: the request has
  // already taken effect.
  void send() const;
  void sendFailure(int code, std::string_view parameter, std::string_view message) const;

 private:
  [[gnu::cold]] std::string failureJson(int code, std::string_view parameter, std::string_view message) const;

  void write(int code, std::string_view body) const;
  void line(std::string_view key, std::string_view value);
  char* extend(std::size_t size);  // returns where the new bytes of the body belong

  bool isJson_ = false;
  bool isSecret_ = false;
  std::string header_;
  std::unique_ptr<char[]> body_;  // of text; no string, because growing one would fill it first
  std::size_t capacity_;
  std::size_t length_ = 0;
  JsonObject object_;  // of JSON
};

}  // namespace camera
