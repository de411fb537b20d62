// Builds the reply and writes it to the web server.
#include "framework/reply.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "framework/checks.h"
#include "framework/form.h"
#include "platform/descriptor.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr std::size_t kUsualBytes = 1024;      // reserved for a body; few are longer
constexpr std::chrono::seconds kPatience{60};  // with a server whose pipe is full and would not block

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

constexpr std::string_view kNoStore = "\r\nCache-Control: no-store";
constexpr std::string_view kTextType = "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ";
constexpr std::string_view kJsonType =
    "\r\nContent-Type: application/json; charset=utf-8\r\nContent-Length: ";

}  // namespace

Reply::Reply() : body_(std::make_unique_for_overwrite<char[]>(kUsualBytes)), capacity_(kUsualBytes) {}

char* Reply::extend(std::size_t size) {
  if (capacity_ - length_ < size) {
    capacity_ = 2 * (length_ + size);
    auto larger = std::make_unique_for_overwrite<char[]>(capacity_);
    std::copy_n(body_.get(), length_, larger.get());
    body_ = std::move(larger);
  }
  return &body_[std::exchange(length_, length_ + size)];
}

void Reply::append(std::string_view lines) {
  std::copy(lines.begin(), lines.end(), extend(lines.size()));
}

// Most lines need no encoding: their bytes are copied at once.
void Reply::line(std::string_view key, std::string_view value) {
  const std::size_t size = key.size() + value.size() + 2;
  char* const start = extend(size);
  char* end = std::copy(key.begin(), key.end(), start);
  *end++ = '=';
  end = std::copy(value.begin(), value.end(), end);
  *end = '\n';
  if (isPlain({start, size - 1})) return;
  length_ -= size;
  std::string shown;
  appendShown(key, &shown);
  shown += '=';
  appendShown(value, &shown);
  append(shown += '\n');
}

void Reply::pair(std::string_view key, std::string_view value) {
  isJson_ ? object_.add(key, value) : line(key, value);
}

void Reply::pair(std::string_view key, int value) {
  number(key, Decimal(value).text());
}

void Reply::number(std::string_view key, std::string_view digits) {
  isJson_ ? object_.addValue(key, digits) : line(key, digits);
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
  writeInTime(STDOUT_FILENO, response, kPatience);
}

void Reply::send() const {
  isJson_ ? write(200, object_.text() + "\n") : write(200, {body_.get(), length_});
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
  std::string body = joined({"error=", Decimal(known).text(), "\n"});
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
