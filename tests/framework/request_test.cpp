// Reading a request: query string, form body, and what is refused before an endpoint sees it.
#include "framework/cgilet.h"
#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

// Answers its parameters back, so that a reply shows what was read.
class EchoCgilet final : public InfCgilet {
 public:
  void onLoad() override { status = 200; }
  void onApply() override { applied = true; }
  void onReply() override {
    for (const auto& [name, value] : queries) pair(name, value);
    infOK();
  }
  bool applied = false;
};

std::string bodyOf(const std::string& response) {
  return response.substr(response.find("\r\n\r\n") + 4);
}

struct FormRow {
  const char* text;
  Queries queries;
};

TEST(Form, ReadsAsTheUrlStandardDoes) {
  const FormRow rows[] = {
      {"", {}},
      {"&&", {}},
      {"a=1", {{"a", "1"}}},
      {"b=2&a=1", {{"a", "1"}, {"b", "2"}}},
      {"a", {{"a", ""}}},
      {"=x", {{"", "x"}}},
      {"a=b=c", {{"a", "b=c"}}},
      {"a=1&a=2", {{"a", "2"}}},
      {"a+b=c+d", {{"a b", "c d"}}},
      {"%61=%7a%7A%2B", {{"a", "zz+"}}},
      {"a=%&b=%4&c=%4g&d=%%41", {{"a", "%"}, {"b", "%4"}, {"c", "%4g"}, {"d", "%A"}}},
      {"a=x%00y", {{"a", "x\0y"s}}},
      {"a=%0d%0a%26%3d", {{"a", "\r\n&="}}},
      {"a=%c3%a9%e2%82%ac%f0%9f%93%b7", {{"a", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x93\xB7"}}},
      {"a=%ffx%c3", {{"a", "\xEF\xBF\xBDx\xEF\xBF\xBD"}}},
      {"a=%e2%82x%ed%a0%80", {{"a", "\xEF\xBF\xBDx\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}}},
  };
  for (const FormRow& row : rows) {
    Queries queries;
    parseForm(row.text, queries);
    EXPECT_EQ(queries, row.queries) << row.text;
  }
}

struct BodyRow {
  const char* what;
  std::string body;
  std::map<std::string, std::string> changes;  // of the environment of a true POSTed form
  bool applied;
  std::string reply;
};

TEST(Request, ReadsABodyOnlyWhenItIsAFormOfTheLengthItSays) {
  const std::string longest = "a=" + std::string(64 * 1024 - 2, 'x');
  const BodyRow rows[] = {
      {"form", "a=1", {}, true, "a=1\n"},
      {"charset",
       "a=1",
       {{"CONTENT_TYPE", "Application/X-WWW-Form-Urlencoded ; charset=utf-8"}},
       true,
       "a=1\n"},
      {"query too", "a=1", {{"QUERY_STRING", "a=0&b=2"}}, true, "a=1\nb=2\n"},
      {"other type", "a=1", {{"CONTENT_TYPE", "text/plain"}}, false, ""},
      {"other method", "a=1", {{"REQUEST_METHOD", "PUT"}}, false, ""},
      {"empty", "", {}, false, ""},
      {"no length", "", {{"CONTENT_LENGTH", ""}}, false, ""},
      {"longest", longest, {}, true, longest + "\n"},
      {"too long", longest + "x", {}, false, "error=400\n"},
      {"says more", "a=1", {{"CONTENT_LENGTH", "4"}}, false, "error=400\n"},
      {"says less", "a=12", {{"CONTENT_LENGTH", "3"}}, false, "error=400\n"},
      {"negative", "a=1", {{"CONTENT_LENGTH", "-3"}}, false, "error=400\n"},
      {"huge", "a=1", {{"CONTENT_LENGTH", "99999999999999999999"}}, false, "error=400\n"},
      {"no number", "a=1", {{"CONTENT_LENGTH", "3x"}}, false, "error=400\n"},
      {"lies, with a query", "a=1", {{"CONTENT_LENGTH", "4"}, {"QUERY_STRING", "b=2"}}, false, "error=400\n"},
  };
  for (const BodyRow& row : rows) {
    CgiInput input = post(row.body);
    for (const auto& [name, value] : row.changes) input.environment[name] = value;
    EchoCgilet cgilet;
    const std::string response = capture(input, [&] { serve(cgilet); });
    EXPECT_EQ(cgilet.applied, row.applied) << row.what;
    EXPECT_EQ(bodyOf(response), row.reply) << row.what;
  }
}

TEST(Reply, IsTheseBytes) {
  EchoCgilet cgilet;
  const std::string response =
      capture(get("b=2&a=x%0d%0ainjected%7f%01%c3%a9&c%0ad=%25"), [&] { serve(cgilet); });
  EXPECT_EQ(response,
            "Status: 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: 38\r\n\r\n"
            "a=x%0D%0Ainjected%7F%01\xC3\xA9\nb=2\nc%0Ad=%\n");
}

struct FailRow {
  int code;
  const char* message;
  const char* response;
};

TEST(Reply, FailureSendsItsCodeAndNoPair) {
  const FailRow rows[] = {
      {400, "",
       "Status: 400 Bad Request\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: 10\r\n\r\n"
       "error=400\n"},
      {409, "a\nb",
       "Status: 409 Conflict\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: 24\r\n\r\n"
       "error=409\nmessage=a%0Ab\n"},
      {307, "",
       "Status: 307 Temporary Redirect\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: "
       "10\r\n\r\n"
       "error=307\n"},
  };
  for (const FailRow& row : rows) {
    const std::string response = capture(get(""), [&] {
      EchoCgilet cgilet;
      cgilet.pair("left", "out");
      cgilet.infFail(row.code, row.message);
    });
    EXPECT_EQ(response, row.response);
  }
}

TEST(Reply, FollowsHeaderLinesThatTheHandlerWrote) {
  const std::string response = capture(get(""), [] {
    EchoCgilet cgilet;
    std::puts("Pragma: no-cache\r");
    cgilet.infFail(307);
  });
  EXPECT_EQ(response.find("Pragma: no-cache\r\nStatus: 307 Temporary Redirect\r\n"), 0U) << response;
}

TEST(Request, CountsTheNamesItFinds) {
  EchoCgilet cgilet;
  capture(get("known=1&other=2"), [&] { cgilet.parseHttp(); });
  BaseCgilet::Queries::iterator position;
  unsigned counter = 0;
  EXPECT_GT(cgilet.getIter("known", position, &counter), 0);
  EXPECT_EQ(position->second, "1");
  EXPECT_LT(cgilet.getIter("unknown", position, &counter), 0);
  EXPECT_EQ(position->second, "1");
  EXPECT_EQ(counter, 1U);
  EXPECT_EQ(cgilet.getQueriesSize(), 2U);
}

}  // namespace
}  // namespace camera::test
