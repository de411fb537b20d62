// Reading a request: query string, form body, and what is refused before an endpoint sees it.
#include "framework/cgilet.h"
#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

// Answers its parameters back, so that a reply shows what was read.
class EchoEndpoint final : public InfCgilet {
 public:
  void onLoad() override { status = 200; }
  void onApply() override { applied = true; }
  void onReply() override {
    for (const auto& [name, value] : queries) pair(name, value);
    infOK();
  }
  bool applied = false;
};

TEST(Form, ReadsAsTheUrlStandardDoes) {
  const std::pair<const char*, Queries> rows[] = {
      {"&&", {}},
      {"b=2&a=1&c&=x&d=a=b=c", {{"", "x"}, {"a", "1"}, {"b", "2"}, {"c", ""}, {"d", "a=b=c"}}},
      {"a=1&a=2", {{"a", "2"}}},
      {"a+b=c+d", {{"a b", "c d"}}},
      {"%61=%7a%7A%2B", {{"a", "zz+"}}},
      {"a=%&b=%4&c=%4g&d=%%41", {{"a", "%"}, {"b", "%4"}, {"c", "%4g"}, {"d", "%A"}}},
      {"a=x%00y&b=%0d%0a%26%3d", {{"a", "x\0y"s}, {"b", "\r\n&="}}},
      {"a=%c3%a9%e2%82%ac%f0%9f%93%b7", {{"a", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x93\xB7"}}},
      {"a=%ffx%c3", {{"a", "\xEF\xBF\xBDx\xEF\xBF\xBD"}}},
      {"a=%e2%82x%ed%a0%80", {{"a", "\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}}},
  };
  for (const auto& [text, expected] : rows) {
    Queries queries;
    parseForm(text, queries);
    EXPECT_EQ(queries, expected) << text;
  }
}

TEST(Request, ReadsABodyOnlyWhenItIsAFormOfTheLengthItSays) {
  constexpr char kForm[] = "error=400\nmessage=body: a POST of type application/x-www-form-urlencoded\n";
  constexpr char kLength[] = "error=400\nmessage=body: at most 65536 bytes\n";
  constexpr char kShort[] = "error=400\nmessage=body: shorter than its Content-Length\n";
  const std::string longest = "a=" + std::string(64 * 1024 - 2, 'x');
  // The body, what differs from the environment of a true POSTed form, and the reply.
  std::vector<std::tuple<std::string, std::map<std::string, std::string>, std::string>> rows = {
      {"a=1", {{"CONTENT_TYPE", " \tApplication/X-WWW-Form-Urlencoded\t ; charset=utf-8"}}, "a=1\n"},
      {"a=1", {{"QUERY_STRING", "a=0&b=2"}}, "a=1\nb=2\n"},
      {"a=1", {{"CONTENT_LENGTH", "2"}}, "a=\n"},  // a server may hand over more than the form
      {"", {{"CONTENT_LENGTH", ""}}, ""},
      {longest, {}, longest + "\n"},
      {longest + "x", {}, kLength},
      {"a=1", {{"CONTENT_TYPE", "text/plain"}}, kForm},
      {"a=1", {{"CONTENT_TYPE", ""}}, kForm},
      {"a=1", {{"REQUEST_METHOD", "PUT"}}, kForm},
      {"a=1", {{"CONTENT_LENGTH", "4"}, {"QUERY_STRING", "b=2"}}, kShort},
      {"a=1", {{"CONTENT_LENGTH", "-3"}}, kLength},
      {"a=1", {{"CONTENT_LENGTH", "99999999999999999999"}}, kLength},
  };
  for (const auto& [body, changes, reply] : rows) {
    CgiInput input = post(body);
    for (const auto& [name, value] : changes) input.environment[name] = value;
    EchoEndpoint cgilet;
    const std::string response = capture(input, [&] { serve(cgilet); });
    EXPECT_EQ(response.substr(response.find("\r\n\r\n") + 4), reply) << testing::PrintToString(changes);
    EXPECT_EQ(cgilet.applied, reply.starts_with("a=")) << testing::PrintToString(changes);
  }
}

constexpr char kType[] = "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ";

TEST(Reply, IsTheseBytes) {
  EchoEndpoint cgilet;
  EXPECT_EQ(capture(get("b=2&a=x%0d%0ainjected%7f%01%c3%a9&c%0ad=%25"), [&] { serve(cgilet); }),
            "Status: 200 OK"s + kType + "38\r\n\r\na=x%0D%0Ainjected%7F%01\xC3\xA9\nb=2\nc%0Ad=%\n");
}

TEST(Reply, FailureSendsItsCodeAndNoPairAfterTheHandlersOwnHeaderLines) {
  const std::string response = capture(get(""), [] {
    EchoEndpoint cgilet;
    std::puts("Pragma: no-cache\r");
    cgilet.pair("left", "out");
    cgilet.infFail(409, "a\nb");
  });
  EXPECT_EQ(response,
            "Pragma: no-cache\r\nStatus: 409 Conflict"s + kType + "24\r\n\r\nerror=409\nmessage=a%0Ab\n");
}

}  // namespace
}  // namespace camera::test
