// The notation of endpoint tests, over the dispatcher's table, the wire and the scripted platform.
//
// How to write an endpoint's test
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
// A row is {query, state, changes, writes}, and all but the query may be left out. Its state comes on top of
// the endpoint's, in the words of ScriptedPlatform::store. Changes are the lines of the reply that are not
// those of the plain read of the same state (or, where the query is the plain read itself, of .reply); left
// out, the query shows the values as it gave them. Writes left out are the endpoint's where the reply
// changed, and none where it did not. Beyond the row, every request is held to: one whole reply; a plain read
// afterwards that agrees with it; cleaned actions, and those of exactly the records written; values that the
// store takes; unused bytes kept.
//
// Queries alone can be given with spaces between them: accepts("user= pppoe=off&user=me").
//
// refuses() takes such a text. Each query answers 400 (or the status given) and changes
// nothing; a message names the parameter at fault, which is the first or any that a ! marks (it is not sent).
// A marked name without a value is one that is missing: "!user" sends nothing, and "!" is the plain read.
//
// What the platform's failures make of the request is not for this file: add the endpoint's row to the table
// in fault_sweep_test.cpp.
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

// Whether a failure's body is the code and a message, which begins with one of the names and a colon.
bool isFailure(const Reply& reply, int status, const std::vector<std::string>& names = {});

struct Row {
  std::string query;
  std::string state{};
  // Each replaces the line of its key; without such a line it is inserted after the one before it. "-key"
  // takes a line away.
  std::optional<std::string> changes{};
  std::optional<std::string> writes{};
};

struct Endpoint {
  std::string cgi;
  std::string state{};   // of every test
  std::string reply{};   // to the plain read of that state; empty when that is refused
  std::string writes{};  // "set pppoe"
  std::string key{};  // "profileid=1": what the plain read sends, with the query's own value where it has one
  bool readsBack = true;  // a plain read afterwards gives the reply again

  void accepts(const std::vector<Row>& rows) const;
  void accepts(const std::string& queries, const std::string& with = "",
               const std::optional<std::string>& written = {}) const;
  void refuses(const std::string& queries, const std::string& with = "", int status = 400) const;

 private:
  std::string plainQuery(const std::string& query) const;
  void accept(const Row& row) const;
  void refuse(const std::string& query, const std::string& with, int status) const;
};

}  // namespace camera::test
