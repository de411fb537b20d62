// InfCgilet: driving the request, building the reply and writing it to the web server.
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "framework/cgilet.h"
#include "framework/params.h"

namespace {

constexpr std::size_t kUsualBytes = 1024;  // of a reply, so that most need not grow

struct Reason {
  int code;
  std::string_view status;
};

constexpr Reason kReasons[] = {
    {500, "500 Internal Server Error"}, {200, "200 OK"},        {307, "307 Temporary Redirect"},
    {400, "400 Bad Request"},           {404, "404 Not Found"}, {409, "409 Conflict"},
};

// A code that no reply has is a failure of ours.
const Reason& reasonOf(int code) {
  for (const Reason& reason : kReasons) {
    if (reason.code == code) return reason;
  }
  return kReasons[0];
}

constexpr bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F;
}

// Appends the text so that it cannot end its line.
void appendEncoded(std::string& line, std::string_view text) {
  for (std::size_t start = 0, end = 0;; start = ++end) {
    while (end < text.size() && !isControl(text[end])) ++end;
    line.append(text.data() + start, end - start);
    if (end == text.size()) return;
    camera::appendEscaped(text[end], &line);
  }
}

void appendLine(std::string& lines, std::string_view key, std::string_view value) {
  appendEncoded(lines, key);
  lines += '=';
  appendEncoded(lines, value);
  lines += '\n';
}

// Sends the response in one write where the reader takes it whole. A reader that has gone is no failure of
// ours: what the request changed is changed.
void send(const Reason& reason, const std::string& body) {
  constexpr std::string_view kType = "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ";
  constexpr std::size_t kMostOfRest = 64;  // the status, the length and what stands between them
  const camera::Decimal length(static_cast<std::int64_t>(body.size()));
  std::string response;
  response.reserve(kType.size() + kMostOfRest + body.size());
  response.append("Status: ").append(reason.status).append(kType).append(length.text()).append("\r\n\r\n");
  response += body;

  static_cast<void>(std::fflush(stdout));  // the handler's own header lines go first
  std::string_view rest = response;
  while (!rest.empty()) {
    const ssize_t count = write(STDOUT_FILENO, rest.data(), rest.size());
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return;
    }
  }
}

}  // namespace

InfCgilet::InfCgilet() {
  body.reserve(kUsualBytes);
}
InfCgilet::~InfCgilet() = default;
void InfCgilet::onDump() {
  onReply();
}

void InfCgilet::pair(const std::string& key, const std::string& value) {
  appendLine(body, key, value);
}

void InfCgilet::pair(const std::string& key, int value) {
  appendLine(body, key, camera::Decimal(value).text());
}

std::span<const camera::ParamRow> InfCgilet::parameters() const {
  return {};
}

void InfCgilet::infOK() {
  if (malformed()) {
    infFail(400);
  } else {
    send(reasonOf(200), body);
  }
}

void InfCgilet::infFail(int code) {
  infFail(code, refusal);
}

void InfCgilet::infFail(int code, const std::string& message) {
  const Reason& reason = reasonOf(code);
  std::string failure;
  appendLine(failure, "error", camera::Decimal(reason.code).text());
  if (!message.empty()) appendLine(failure, "message", message);
  send(reason, failure);
}

void camera::serve(InfCgilet& cgilet) {
  cgilet.onLoad();
  if (cgilet.parseHttp()) {
    cgilet.onApply();
    cgilet.cleanUp();
  }
  cgilet.onReply();
}
