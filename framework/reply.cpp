// InfCgilet: building the reply and writing it to the web server.
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>

#include "framework/cgilet.h"

namespace {

struct Reason {
  int code;
  const char* status;
};

constexpr Reason kReasons[] = {
    {200, "200 OK"},        {307, "307 Temporary Redirect"}, {400, "400 Bad Request"},
    {404, "404 Not Found"}, {409, "409 Conflict"},           {500, "500 Internal Server Error"},
};

const char* statusLine(int code) {
  for (const Reason& reason : kReasons) {
    if (reason.code == code) return reason.status;
  }
  return "500 Internal Server Error";
}

std::string decimal(long long number) {
  char digits[24];
  return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

// Appends the text so that it cannot end its line.
void appendEncoded(std::string& line, std::string_view text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
      line += {'%', kHex[byte >> 4], kHex[byte & 15]};
    } else {
      line += c;
    }
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
void send(int code, const std::string& body) {
  std::string response = "Status: ";
  response += statusLine(code);
  response += "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ";
  response += decimal(static_cast<long long>(body.size()));
  response += "\r\n\r\n";
  response += body;

  static_cast<void>(std::fflush(stdout));  // the handler's own header lines go first
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
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

InfCgilet::InfCgilet() = default;
InfCgilet::~InfCgilet() = default;
void InfCgilet::onDump() {
  onReply();
}

void InfCgilet::pair(const std::string& key, const std::string& value) {
  appendLine(body, key, value);
}

void InfCgilet::pair(const std::string& key, int value) {
  appendLine(body, key, decimal(value));
}

void InfCgilet::infOK() {
  if (malformed_ != 0) {
    infFail(400);
  } else {
    send(200, body);
  }
}

void InfCgilet::infFail(int code) {
  infFail(code, {});
}

void InfCgilet::infFail(int code, const std::string& message) {
  std::string failure;
  appendLine(failure, "error", decimal(code));
  if (!message.empty()) appendLine(failure, "message", message);
  send(code, failure);
}
