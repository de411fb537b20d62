// JSON: what a request's body may be, what a reply looks like, and when a client gets one.
#include "framework/json.h"

#include <gtest/gtest.h>

#include <sstream>

#include "framework/reply.h"
#include "framework/request.h"
#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

using namespace std::string_literals;

// The members, as NAME<KIND>VALUE, or what is wrong.
std::string parsed(std::string_view text) {
  std::vector<JsonMember> members;
  std::string shown = parseJson(text, &members);
  if (!shown.empty()) return shown;
  for (const JsonMember& member : members) {
    shown += member.name + "sntl"[member.kind];
    for (const std::string& value : member.texts) shown += value + ",";
  }
  return shown;
}

TEST(Json, IsOneObjectOfPlainValues) {
  const std::pair<std::string, std::string> rows[] = {
      {"{}", ""},
      {" \t\r\n{ \"a\" : \"1\" } \n", "as1,"},
      {R"({"a":-0,"b":10,"c":-7})", "an-0,bn10,cn-7,"},
      {R"({"a":true,"b":false,"":""})", "attrue,btfalse,s,"},
      {R"({"a":[],"b":["x",1],"c":["]"]})", "alblx,1,cl],"},
      {R"({"a\"\\\/\b\f\n\r\t":"\u0041\u00e9\u20AC\ud83d\udcf7"})",
       "a\"\\/\b\f\n\r\ts\x41\xC3\xA9\xE2\x82\xAC\xF0\x9F\x93\xB7,"},
      {R"({"a":"x\u0000y"})", "asx\0y,"s},
      {"", "expected an object at byte 1"},
      {"[1]", "expected an object at byte 1"},
      {"{,}", "expected a name in quotes at byte 2"},
      {"{\"a\"1}", "expected a colon at byte 5"},
      {"{\"a\":1,}", "expected a name in quotes at byte 8"},
      {"{\"a\":1", "expected a comma or the end of the object at byte 7"},
      {"{\"a\":1}x", "expected nothing after the object at byte 8"},
      {"{\"a\":1,\"a\":2}", "expected a name that is not given twice at byte 11"},
      {"{\"a\":null}", "expected a text, an integer, true, false or an array at byte 6"},
      {"{\"a\":{}}", "expected a text, an integer, true, false or an array at byte 6"},
      {"{\"a\":[true]}", "expected a text or an integer at byte 7"},
      {"{\"a\":[1 2]}", "expected a comma or the end of the array at byte 9"},
      {"{\"a\":\"\xFF\"}", "not UTF-8"}};
  for (const auto& [text, members] : rows) EXPECT_EQ(parsed(text), members) << text;
  std::istringstream values{
      R"(01 +1 1.5 1. 1e2 1E2 .5 - --1 1-2 tru "x "\x" "\u12g4" "\ud83d" "\udcf7" "\ud83dxxdcf7" "\ud83d\u0041" "\ "\" "a)"
      "\x01\""};
  for (std::string value; values >> value;)
    EXPECT_NE(parsed("{\"a\":" + value + "}").find("expected"), std::string::npos) << value;
}

TEST(Json, RepliesAreValidWhateverTheyHold) {
  Reply reply;
  reply.useJson();
  reply.pair("a\"", "\\ / \n\x01\x7F \xC3\xA9 \xFF");
  reply.pair("n", -5);
  reply.list("l", "x,,y");
  reply.list("m", "1,20", ListOf::kNumbers);
  reply.list("e", "");
  for (const char* value : {"1", "2", "3"}) reply.pair("r", value);
  const std::string body = R"({"a\"":"\\ / \n\u0001\u007f )"
                           "\xC3\xA9 \xEF\xBF\xBD"
                           R"(","n":-5,"l":["x","y"],"m":[1,20],"e":[],"r":["1","2","3"]})"
                           "\n";
  EXPECT_EQ(capture({}, [&] { reply.send(); }),
            "Status: 200 OK\r\nContent-Type: application/json; charset=utf-8\r\nContent-Length: " +
                std::to_string(body.size()) + "\r\n\r\n" + body);
  const std::string failure = capture({}, [&] { reply.sendFailure(409, "p", "q"); });
  EXPECT_EQ(failure.substr(failure.find('{')), "{\"error\":409,\"parameter\":\"p\",\"message\":\"q\"}\n");
}

TEST(Json, IsForClientsThatPreferItToText) {
  for (const char* accept :
       {"application/json", "text/plain;q=0.5, application/json", "APPLICATION/JSON ; q=0.001",
        "*/*;q=0.9,application/json;charset=utf-8", "application/*", "*/*, text/plain;q=0.1",
        "text/*;q=0.5,APPLICATION/*", "application/json;q=1.000,text/*;q=0.999",
        "application/json, application/*;q=0, text/plain; Q=0.5"})
    EXPECT_TRUE(prefersJson(accept)) << accept;
  for (const char* accept :
       {"", "*/*", "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8",
        "application/json, text/plain, */*", "application/json;q=0", "application/json;q=0.9,text/plain",
        "application/json;q=2", "application/json;q=1.001", "application/json;q=0.1234",
        "application/json;q=x", "application/json,*/*", "application/jsonp", "image/png",
        "application/*,application/json;q=0"})
    EXPECT_FALSE(prefersJson(accept)) << accept;
}

}  // namespace
}  // namespace camera::test
