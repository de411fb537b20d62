// Builds the reply and writes it to the web server.
#include "framework/reply.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "framework/checks.h"
#include "framework/form.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr std::size_t kUsualBytes = 1024;  // reserved for a body; few are longer

struct Reason {
  int code;
  std::string_view status;
};

constexpr Reason kReasons[] = {
    {500, "500 Internal Server Error"},
    {200, "200 OK"},
    {307, "307 Temporary Redirect"},
    {400, "400 Bad Request"},
    {404, "404 Not Found"},
    {409, "409 Conflict"},
    {403, "403 Forbidden"},
    {503, "503 Service Unavailable"},
};

// An unknown code is a bug of the endpoint and becomes 500.
const Reason& reasonOf(int code) {
  for (const Reason& reason : kReasons) {
    if (reason.code == code) return reason;
  }
  return kReasons[0];
}

// Most lines need no encoding: their bytes are copied at once.
void appendLine(std::string& lines, std::string_view key, std::string_view value) {
  const std::size_t start = lines.size();
  lines.resize(start + key.size() + value.size() + 2, '\n');
  char* end = std::copy(key.begin(), key.end(), &lines[start]);
  *end = '=';
  std::copy(value.begin(), value.end(), end + 1);
  if (isPlain({&lines[start], key.size() + value.size() + 1})) return;
  lines.resize(start);
  appendShown(key, &lines);
  lines += '=';
  appendShown(value, &lines);
  lines += '\n';
}

constexpr std::string_view kNoStore = "\r\nCache-Control: no-store";
constexpr std::string_view kTextType = "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ";
constexpr std::string_view kJsonType =
    "\r\nContent-Type: application/json; charset=utf-8\r\nContent-Length: ";

}  // namespace

Reply::Reply() {
  body_.reserve(kUsualBytes);
}

void Reply::pair(std::string_view key, std::string_view value) {
  isJson_ ? object_.add(key, value) : appendLine(body_, key, value);
}

void Reply::pair(std::string_view key, int value) {
  const Decimal digits(value);
  isJson_ ? object_.addValue(key, digits.text()) : appendLine(body_, key, digits.text());
}

void Reply::number(std::string_view key, std::string_view digits) {
  isJson_ ? object_.addValue(key, digits) : appendLine(body_, key, digits);
}

void Reply::list(std::string_view key, std::string_view items, ListOf kind) {
  isJson_ ? object_.addValue(key, jsonList(items, kind)) : pair(key, items);
}

void Reply::write(int code, std::string_view body) const {
  constexpr std::size_t kOtherBytes = 64;  // at most; status, length and line ends
  const std::string_view type = isJson_ ? kJsonType : kTextType;
  const Decimal length(static_cast<std::int64_t>(body.size()));
  std::string response;
  response.reserve(header_.size() + kNoStore.size() + type.size() + kOtherBytes + body.size());
  response.append(header_).append("Status: ").append(reasonOf(code).status);
  response.append(isSecret_ ? kNoStore : "").append(type);
  response.append(length.text()).append("\r\n\r\n").append(body);
  std::string_view rest = response;
  while (!rest.empty()) {
    const ssize_t count = ::write(STDOUT_FILENO, rest.data(), rest.size());
    if (count < 0 && errno != EINTR) return;
    if (count > 0) rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

void Reply::send() const {
  isJson_ ? write(200, object_.text() + "\n") : write(200, body_);
}

std::string Reply::failureJson(int code, std::string_view parameter, std::string_view message) const {
  JsonObject failure;
  failure.add("error", code);
  if (!parameter.empty()) failure.add("parameter", parameter);
  if (!message.empty()) failure.add("message", message);
  return failure.text() + "\n";
}

void Reply::sendFailure(int code, std::string_view parameter, std::string_view message) const {
  const int known = reasonOf(code).code;
  if (isJson_) return write(known, failureJson(known, parameter, message));
  std::string body;
  appendLine(body, "error", Decimal(known).text());
  if (!message.empty()) {
    body += "message=";
    appendShown(parameter, &body);
    if (!parameter.empty()) body += ": ";
    appendShown(message, &body);
    body += '\n';
  }
  write(known, body);
}

}  // namespace camera
