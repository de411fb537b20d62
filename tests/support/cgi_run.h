// Runs code as a CGI program runs: with an environment, a standard input and a captured standard output.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <string>

namespace camera::test {

struct CgiInput {
  std::map<std::string, std::string> environment;
  std::string body;
};

inline constexpr const char* kVariables[] = {"REQUEST_METHOD", "QUERY_STRING", "CONTENT_TYPE",
                                             "CONTENT_LENGTH", "HTTP_ACCEPT",  "SERVER_PORT"};

// A standard stream, and the file in memory that replaces it during each run.
class Stream {
 public:
  explicit Stream(int descriptor)
      : descriptor_{descriptor}, original_{dup(descriptor)}, file_{memfd_create("stream", MFD_CLOEXEC)} {}

  void redirect(const std::string& content) const {
    const bool filled = ftruncate(file_, 0) == 0 && lseek(file_, 0, SEEK_SET) == 0 &&
                        pwrite(file_, content.data(), content.size(), 0) == std::ssize(content);
    if (!filled || dup2(file_, descriptor_) < 0) std::abort();
  }
  std::string restore() const {
    std::string text(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), '\0');
    const bool taken = pread(file_, text.data(), text.size(), 0) == std::ssize(text);
    if (!taken || dup2(original_, descriptor_) < 0) std::abort();
    return text;
  }

 private:
  int descriptor_, original_, file_;
};

inline CgiInput get(const std::string& query) {
  return {.environment = {{"REQUEST_METHOD", "GET"}, {"QUERY_STRING", query}}, .body = {}};
}

// A POSTed form with its true length.
inline CgiInput post(const std::string& form) {
  return {.environment = {{"REQUEST_METHOD", "POST"},
                          {"CONTENT_TYPE", "application/x-www-form-urlencoded"},
                          {"CONTENT_LENGTH", std::to_string(form.size())}},
          .body = form};
}

// A JSON request, which asks for a JSON reply; without a body, a GET.
inline CgiInput json(const std::string& body, const std::string& query = "") {
  CgiInput input = body.empty() ? get(query) : post(body);
  input.environment["QUERY_STRING"] = query;
  input.environment["HTTP_ACCEPT"] = "application/json";
  if (!body.empty()) input.environment["CONTENT_TYPE"] = "application/json; charset=utf-8";
  return input;
}

// What the code wrote to standard output. The CGI variables of the input are set while it runs.
inline std::string capture(const CgiInput& input, const std::function<void()>& code) {
  static const Stream in{STDIN_FILENO};
  static const Stream out{STDOUT_FILENO};
  for (const char* variable : kVariables) {
    const auto given = input.environment.find(variable);
    if (given == input.environment.end())
      unsetenv(variable);
    else
      setenv(variable, given->second.c_str(), 1);
  }
  fflush(stdout);
  in.redirect(input.body);
  out.redirect({});
  code();
  fflush(stdout);
  in.restore();
  return out.restore();
}

}  // namespace camera::test
