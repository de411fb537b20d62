// The notation of endpoint tests.
#include "tests/handlers/endpoint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "framework/endpoint_table.h"

namespace camera::test {
namespace {

using Texts = std::vector<std::string>;

Texts split(const std::string& text, char separator) {
  Texts pieces;
  std::istringstream rest{text};
  for (std::string piece; std::getline(rest, piece, separator);) pieces.push_back(piece);
  return pieces;
}

std::string join(const Texts& pieces) {
  std::string text;
  for (const std::string& piece : pieces) text += (text.empty() ? "" : "&") + piece;
  return text;
}

// The line with the same key as this one.
Texts::iterator findLine(Texts& lines, const std::string& line) {
  const std::string key = line.substr(0, line.find('=')) + "=";
  return std::find_if(lines.begin(), lines.end(), [&](const std::string& l) { return l.starts_with(key); });
}

std::string changed(const std::string& reply, const std::string& changes) {
  Texts lines = split(reply, '&');
  std::size_t next = lines.size();
  for (const std::string& change : split(changes, '&')) {
    const bool removes = change.starts_with('-');
    const auto found = findLine(lines, change.substr(removes ? 1 : 0));
    const std::size_t at = found == lines.end() ? next : static_cast<std::size_t>(found - lines.begin());
    if (found != lines.end()) lines.erase(found);
    if (!removes) lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), change);
    next = removes ? at : at + 1;
  }
  return join(lines);
}

// The reply, with the query's values in the lines that it has.
std::string asGiven(const std::string& reply, const std::string& query) {
  Texts lines = split(reply, '&');
  for (const std::string& given : split(query, '&')) {
    const auto line = findLine(lines, given);
    if (line != lines.end()) *line = given;
  }
  return join(lines);
}

}  // namespace

Reply request(const std::string& cgi, const CgiInput& input) {
  scripted().beginRequest();
  const std::string response = capture(input, findEndpoint(cgi)->serve);
  const std::size_t end = response.find("\r\n\r\n") + 4;
  std::string body = response.substr(std::min(end, response.size()));
  EXPECT_NE(response.find("\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n"), response.npos)
      << cgi << " does not give one whole reply: " << response;
  const std::size_t code = ("\n" + response).find("\nStatus: ");
  const int status = code < end ? std::stoi(response.substr(code + 8)) : 0;
  EXPECT_TRUE(status != 200 || scripted().unfinished == 0) << cgi << " did not run its actions";
  if (body.ends_with('\n')) body.pop_back();
  std::replace(body.begin(), body.end(), '\n', '&');
  const std::size_t own = std::min(response.find('\n', code), end) + 1;
  const std::size_t type = std::min(response.find("Content-Type: "), end);
  return {status, body, response.substr(0, code) + response.substr(std::min(own, type), type - own)};
}

bool isFailure(const Reply& reply, int status, const Texts& names) {
  const std::string start = "error=" + std::to_string(status) + "&message=";
  const bool isNamed = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
    return reply.body.starts_with(start + name + ":");
  });
  return reply.status == status && reply.body.starts_with(start) && reply.body.size() > start.size() &&
         (names.empty() || isNamed);
}

std::string Endpoint::plainQuery(const std::string& query) const {
  Texts given = split(query, '&');
  const auto own = findLine(given, key);
  return key.empty() || own == given.end() ? key : *own;
}

void Endpoint::accepts(const std::vector<Row>& rows) const {
  accept({key, "", ""});
  for (const Row& row : rows) accept(row);
}

void Endpoint::accepts(const std::string& queries, const std::string& with,
                       const std::optional<std::string>& written) const {
  accept({key, "", ""});
  for (const std::string& query : split(queries, ' ')) accept({query, with, {}, written});
}

void Endpoint::accept(const Row& row) const {
  SCOPED_TRACE(cgi + "?" + row.query + "  on " + state + " " + row.state);
  const std::string plain = plainQuery(row.query);
  scripted().reset(state + " " + row.state);
  const Reply before = request(cgi, plain);
  EXPECT_EQ(scripted().writes(), "");
  const bool readable = before.status == 200;
  const bool reads = row.query == plain;
  const std::string base = reads || !readable ? reply : before.body;
  const std::string expected = row.changes ? changed(base, *row.changes) : asGiven(base, row.query);
  EXPECT_TRUE(readable || reply.empty()) << "the plain read fails: " << before.body;
  if (reads && !readable) return;

  const Reply after = request(cgi, row.query);
  EXPECT_EQ(scripted().log.substr(std::min(scripted().log.find(' '), scripted().log.size())),
            row.ignores.empty() ? "" : " ignored: " + row.ignores + "\n");
  EXPECT_EQ(after.status, 200);
  EXPECT_EQ(after.body, expected);
  EXPECT_EQ(scripted().writes(), row.writes.value_or(reads || expected == base ? "" : writes));
  const bool agrees = !readable || !readsBack || request(cgi, plain).body == after.body;
  EXPECT_TRUE(agrees) << "what it replied is not what it stored";
}

void Endpoint::refuses(const std::string& queries, const std::string& with, int status,
                       const std::string& text) const {
  for (const std::string& query : split(queries, ' ')) refuse(query, with, status, text);
}

void Endpoint::refuse(const std::string& query, const std::string& with, int status,
                      const std::string& text) const {
  Texts sent;
  Texts names;
  for (std::string piece : split(query, '&')) {
    const std::string name = piece.substr(0, piece.find('='));
    const bool isMarked = piece.starts_with('!');
    if (isMarked) names.push_back(name.substr(1));
    if (!isMarked || piece != name) sent.push_back(piece.substr(isMarked ? 1 : 0));
  }
  if (names.empty() && !sent.empty()) names.push_back(sent[0].substr(0, sent[0].find('=')));
  SCOPED_TRACE(cgi + "?" + join(sent) + "  on " + state + " " + with);
  scripted().reset(state + " " + with);
  const Reply reply = request(cgi, join(sent));
  EXPECT_TRUE(isFailure(reply, status, status == 400 && names != Texts{""} ? names : Texts{})) << reply.body;
  EXPECT_NE(reply.body, "error=404&message=this camera has no such part") << "add it to kFeatureNames";
  EXPECT_TRUE(reply.body.ends_with(text)) << reply.body << " does not end with " << text;
  EXPECT_EQ(scripted().writes(), "");
}

}  // namespace camera::test
