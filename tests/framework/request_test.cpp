// Requests, read from query string and form body, and the bytes of a reply.
#include "framework/request.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>

#include <csignal>

#include "framework/reply.h"
#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

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
  constexpr char kForm[] = "body: a POST of type application/x-www-form-urlencoded or application/json";
  constexpr char kLength[] = "body: at most 65536 bytes";
  constexpr char kShort[] = "body: shorter than its Content-Length";
  const std::string longest = "a=" + std::string(64 * 1024 - 2, 'x');
  const Queries one{{"a", "1"}};
  const Queries none;
  // The body, the changes to the environment of post(), the parameters and the error.
  using Changes = std::map<std::string, std::string>;
  const std::vector<std::tuple<std::string, Changes, Queries, std::string>> rows = {
      {"a=1", {{"CONTENT_TYPE", " \tApplication/X-WWW-Form-Urlencoded\t ; charset=utf-8"}}, one, ""},
      {"a=1", {{"QUERY_STRING", "a=0&b=2"}}, {{"a", "1"}, {"b", "2"}}, ""},
      {"a=1", {{"CONTENT_LENGTH", "2"}}, {{"a", ""}}, ""},  // a server may hand over more than the form
      {"", {{"CONTENT_LENGTH", ""}}, none, ""},
      {longest, {}, {{"a", longest.substr(2)}}, ""},
      {longest + "x", {}, none, kLength},
      {"", {{"QUERY_STRING", longest}}, {{"a", longest.substr(2)}}, ""},
      {"", {{"QUERY_STRING", longest + "x"}}, none, "query: at most 65536 bytes"},
      {"a=1", {{"CONTENT_TYPE", "text/plain"}}, none, kForm},
      {"a=1", {{"REQUEST_METHOD", "PUT"}}, none, kForm},
      {"a=1", {{"CONTENT_LENGTH", "4"}, {"QUERY_STRING", "b=2"}}, none, kShort},
      {"a=1", {{"CONTENT_LENGTH", "-3"}}, none, kLength},
      {R"({"a":"1"})",
       {{"CONTENT_TYPE", "Application/JSON;charset=utf-8"}, {"QUERY_STRING", "a=0&b=2"}},
       {{"a", "1"}, {"b", "2"}},
       ""},
      {"{",
       {{"CONTENT_TYPE", "application/json"}, {"QUERY_STRING", "b=2"}},
       none,
       "body: expected a name in quotes at byte 2"},
  };
  for (const auto& [body, changes, params, error] : rows) {
    CgiInput input = post(body);
    for (const auto& [name, value] : changes) input.environment[name] = value;
    Request request;
    capture(input, [&] { readRequest(cgiVariables(), false, &request); });
    EXPECT_EQ(request.params, params) << testing::PrintToString(changes);
    EXPECT_EQ(request.error, error) << testing::PrintToString(changes);
  }
}

// Signals interrupt each read and write of the program, so that they are short, or do nothing.
[[noreturn]] void echoAmongSignals(int in, int out, int flags) {
  struct sigaction interrupts {};
  interrupts.sa_handler = [](int) {};
  sigaction(SIGALRM, &interrupts, nullptr);
  const itimerval often{{0, 1000}, {0, 1000}};
  setitimer(ITIMER_REAL, &often, nullptr);
  for (const int end : {in, out}) fcntl(end, F_SETFL, flags);
  dup2(in, STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  Request request;
  readRequest(cgiVariables(), false, &request);
  Reply reply;
  reply.append(request.error + request.params["a"]);
  reply.send();
  _exit(0);
}

TEST(Channels, ABodyAndAReplyComeWholeInWhateverPieces) {
  signal(SIGPIPE, SIG_IGN);
  const std::string value(60'000, 'x');
  const CgiInput input = post("a=" + value);
  for (const int flags : {0, O_NONBLOCK}) {
    int body[2], reply[2];
    ASSERT_TRUE(pipe2(body, O_CLOEXEC) == 0 && pipe2(reply, O_CLOEXEC) == 0);
    fcntl(reply[1], F_SETPIPE_SZ, 4096);
    capture(input, [] {});  // sets the variables
    const pid_t child = fork();
    if (child == 0) echoAmongSignals(body[0], reply[1], flags);
    close(body[0]), close(reply[1]);
    for (std::size_t i = 0; i < input.body.size(); i += 2000, usleep(2000))
      EXPECT_GT(write(body[1], &input.body[i], std::min<std::size_t>(2000, input.body.size() - i)), 0);
    std::string all;
    for (char byte = 0; read(reply[0], &byte, 1) == 1; all += byte)
      if (all.size() % 1000 == 0) usleep(2000);
    EXPECT_TRUE(all.ends_with("\r\n\r\n" + value)) << flags << ": " << all.substr(0, 200);
    close(body[1]), close(reply[0]), waitpid(child, nullptr, 0);
  }
}

TEST(Reply, IsTheseBytes) {
  constexpr char kType[] = "\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: ";
  Reply reply;
  reply.pair("a", "x\r\ninjected\x7F\x01\xC3\xA9");
  reply.pair("c\nd", "%0A");
  reply.pair("e", "%\n");
  reply.pair("f", "\xC2\x85\xE2\x80\xA8\xE2\x80\xA9\xC2\x84\xE2\x80\xAA");
  reply.pair("n", -2);
  reply.append("a line\n");
  EXPECT_EQ(capture({}, [&] { reply.send(); }),
            "Status: 200 OK"s + kType +
                "89\r\n\r\na=x%0D%0Ainjected%7F%01\xC3\xA9\nc%0Ad=%0A\ne=%25%0A\n"
                "f=%C2%85%E2%80%A8%E2%80%A9\xC2\x84\xE2\x80\xAA\nn=-2\na line\n");
  reply.header("Pragma: no-cache");
  EXPECT_EQ(capture({}, [&] { reply.sendFailure(409, "", "a\nb"); }),
            "Pragma: no-cache\r\nStatus: 409 Conflict"s + kType + "24\r\n\r\nerror=409\nmessage=a%0Ab\n");
  EXPECT_EQ(capture({}, [&] { Reply().sendFailure(307, "", ""); }),
            "Status: 307 Temporary Redirect"s + kType + "10\r\n\r\nerror=307\n");
  EXPECT_EQ(capture({}, [&] { Reply().sendFailure(400, "p\n", "x"); }),
            "Status: 400 Bad Request"s + kType + "26\r\n\r\nerror=400\nmessage=p%0A: x\n");
}

}  // namespace
}  // namespace camera::test
