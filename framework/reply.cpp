// Builds the reply and writes it to the web server.
#include "framework/reply.h"

#include <unistd.h>

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
    {500, "500 Internal Server Error"}, {200, "200 OK"},        {307, "307 Temporary Redirect"},
    {400, "400 Bad Request"},           {404, "404 Not Found"}, {409, "409 Conflict"},
};

// An unknown code is a bug of the endpoint and becomes 500.
const Reason& reasonOf(int code) {
  for (const Reason& reason : kReasons) {
    if (reason.code == code) return reason;
  }
  return kReasons[0];
}

void appendEncoded(std::string& line, std::string_view text) {
  for (std::size_t start = 0, end = 0;; start = ++end) {
    while (end < text.size() && !isControl(text[end])) ++end;
    line.append(text.data() + start, end - start);
    if (end == text.size()) return;
    appendEscaped(text[end], &line);
  }
}

void appendLine(std::string& lines, std::string_view key, std::string_view value) {
  appendEncoded(lines, key);
  lines += '=';
  appendEncoded(lines, value);
  lines += '\n';
}

void write(const Reason& reason, const std::string& header, const std::string& body) {
  constexpr std::string_view kType = "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ";
  constexpr std::size_t kOtherBytes = 64;  // at most; status, length and line ends
  const Decimal length(static_cast<std::int64_t>(body.size()));
  std::string response;
  response.reserve(header.size() + kType.size() + kOtherBytes + body.size());
  response.append(header).append("Status: ").append(reason.status).append(kType);
  response.append(length.text()).append("\r\n\r\n").append(body);
  std::string_view rest = response;
  while (!rest.empty()) {
    const ssize_t count = ::write(STDOUT_FILENO, rest.data(), rest.size());
    if (count < 0 && errno != EINTR) return;
    if (count > 0) rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace

Reply::Reply() {
  body_.reserve(kUsualBytes);
}

void Reply::pair(std::string_view key, std::string_view value) {
  appendLine(body_, key, value);
}

void Reply::pair(std::string_view key, int value) {
  appendLine(body_, key, Decimal(value).text());
}

void Reply::send() const {
  write(reasonOf(200), header_, body_);
}

void Reply::sendFailure(int code, std::string_view message) const {
  const Reason& reason = reasonOf(code);
  std::string body;
  appendLine(body, "error", Decimal(reason.code).text());
  if (!message.empty()) appendLine(body, "message", message);
  write(reason, header_, body);
}

}  // namespace camera
