// Runs code as a CGI program runs: with an environment, a standard input and a captured standard output.
#include "tests/support/cgi_run.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

namespace camera::test {
namespace {

constexpr const char* kVariables[] = {"REQUEST_METHOD", "QUERY_STRING", "CONTENT_TYPE", "CONTENT_LENGTH"};

// A descriptor replaced by an in-memory file until the object ends.
class Redirect {
 public:
  Redirect(int descriptor, const std::string& content)
      : descriptor_{descriptor}, saved_{dup(descriptor)}, file_{memfd_create("redirect", 0)} {
    if (pwrite(file_, content.data(), content.size(), 0) != std::ssize(content)) std::abort();
    dup2(file_, descriptor_);
  }
  ~Redirect() {
    dup2(saved_, descriptor_);
    for (const int descriptor : {saved_, file_}) close(descriptor);
  }
  std::string content() const {
    std::string text(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), '\0');
    if (pread(file_, text.data(), text.size(), 0) != std::ssize(text)) std::abort();
    return text;
  }

 private:
  int descriptor_, saved_, file_;
};

}  // namespace

CgiInput get(const std::string& query) {
  return {.environment = {{"REQUEST_METHOD", "GET"}, {"QUERY_STRING", query}}, .body = {}};
}

CgiInput post(const std::string& form) {
  return {.environment = {{"REQUEST_METHOD", "POST"},
                          {"CONTENT_TYPE", "application/x-www-form-urlencoded"},
                          {"CONTENT_LENGTH", std::to_string(form.size())}},
          .body = form};
}

std::string capture(const CgiInput& input, const std::function<void()>& code) {
  for (const char* variable : kVariables) unsetenv(variable);
  for (const auto& [name, value] : input.environment) setenv(name.c_str(), value.c_str(), 1);
  fflush(stdout);
  const Redirect in{STDIN_FILENO, input.body};
  const Redirect out{STDOUT_FILENO, {}};
  code();
  fflush(stdout);
  return out.content();
}

}  // namespace camera::test
