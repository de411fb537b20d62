// The notation of endpoint tests. A request goes through the dispatcher's table to the endpoint, which runs
// on the scripted platform.
//
// Rows that need no code stand in answers/AREA.txt, whose form answers_test.cpp describes. What needs a loop
// or another expectation is a TEST in AREA_test.cpp with the same notation:
//
//   const Endpoint kPppoe{"pppoe.cgi", "pppoe.enable=0 pppoe.user=me pppoe.password=secret",
//                         "pppoe=off&user=me&pass=secret", "set pppoe"};
//
//   TEST(PPPoE, IsNeverOnWithoutAUser) {
//     kPppoe.accepts({{"user=&pppoe=off", "pppoe.enable=1"},
//                     {"user=%22", "", "user=\""}});
//     kPppoe.refuses("pppoe=On user=a+b pppoe=on&!colour=red");
//     kPppoe.refuses("pppoe=on&!user", "pppoe.user=");
//   }
//
// The plain read is the request without parameters, or with the endpoint's key alone.
//
// A row is {query, state, changes, writes, ignores}; all but the query may be left out.
//   state    is added to the endpoint's, in the words of ScriptedPlatform::store.
//   changes  are the lines in which the reply differs from that of the plain read of the same state. If the
//            query is the plain read itself, they are those in which it differs from .reply. Left out: the
//            reply shows the values as the query gives them.
//   writes   are the calls that write. Left out: the endpoint's if the reply has changed, otherwise none.
//   ignores  are the names that the log calls ignored, with commas. Left out: none.
//
// Every request is also checked for this: There is one whole reply, and a plain read afterwards agrees with
// it. The action programs of exactly the written records run. The store accepts the values. Unused bytes keep
// their values.
//
// Rows of a query alone can be one text, with spaces between the queries:
// accepts("user= pppoe=off&user=me").
//
// refuses() takes such a text. Each query must be answered with 400 (or the given status) and change nothing.
// The message must begin with the name of a parameter that a ! marks (the ! is not sent) or, without a mark,
// with the first parameter's. It must end with the text, if that is given. A marked name without "=" is not
// sent, because it is required and missing:
// "!user" sends nothing. "!" is the request without parameters.
//
// Failures of the platform are not for this file: add the endpoint's row to the table in
// fault_sweep_test.cpp.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/handlers/scripted_platform.h"
#include "tests/support/cgi_run.h"

namespace camera::test {

struct Reply {
  int status;
  std::string body;      // its lines, joined by &
  std::string header{};  // the lines that the endpoint wrote itself
};

// Serves a request on the scripted platform as it is.
Reply request(const std::string& cgi, const CgiInput& input);
inline Reply request(const std::string& cgi, const std::string& query) {
  return request(cgi, get(query));
}

// True if the reply has that status and a body of code and message. The message must begin with one of the
// names, if any, and a colon.
bool isFailure(const Reply& reply, int status, const std::vector<std::string>& names = {});

struct Row {
  std::string query;
  std::string state{};
  // Each line replaces the one with its key. If there is none, it is inserted after the previous change, or
  // at the end. "-key" removes a line.
  std::optional<std::string> changes{};
  std::optional<std::string> writes{};
  std::string ignores{};
};

struct Endpoint {
  std::string cgi;
  std::string state{};    // of every row
  std::string reply{};    // to the plain read of that state; empty if that is rejected
  std::string writes{};   // "set pppoe"
  std::string key{};      // the plain read's query: "profileid=1"; a row's query may have another value
  bool readsBack = true;  // a plain read afterwards gives the same reply

  void accepts(const std::vector<Row>& rows) const;
  void accepts(const std::string& queries, const std::string& with = "",
               const std::optional<std::string>& written = {}) const;
  void refuses(const std::string& queries, const std::string& with = "", int status = 400,
               const std::string& text = "") const;

 private:
  std::string plainQuery(const std::string& query) const;
  void accept(const Row& row) const;
  void refuse(const std::string& query, const std::string& with, int status, const std::string& text) const;
};

}  // namespace camera::test
