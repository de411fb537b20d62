// Runs code as a CGI program runs: with an environment, a standard input and a captured standard output.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace camera::test {

struct CgiInput {
  std::map<std::string, std::string> environment;
  std::string body;
};

CgiInput get(const std::string& query);
CgiInput post(const std::string& form);  // a POSTed form with its true length

// What the code wrote to standard output. The CGI variables of the input are set while it runs.
std::string capture(const CgiInput& input, const std::function<void()>& code);

}  // namespace camera::test
