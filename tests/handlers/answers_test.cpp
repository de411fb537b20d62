// The endpoints' answers as the files in answers/ have them: each a list of requests, of the states that they
// meet, and of the replies. Lines:
//
//   # RULE                         what the rows below show
//   endpoint CGI                   of the rows up to the next such line, with, if it has them:
//   state STATE                      the words of ScriptedPlatform::store
//   reply LINES                      the plain read's, joined by &
//   writes CALLS                     what a change writes
//   key QUERY                        what the plain read sends
//   shown only                       a plain read afterwards need not agree
//   ok QUERIES  on STATE  says CHANGES  writes CALLS
//   refused QUERIES  on STATE  with STATUS
//
// The parts of a row are those of Row and refuses in endpoint.h; all but the queries may be left out. An
// empty part is the word nothing.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

// Takes the part behind "  NAME " off the row; nothing if the row has none.
std::optional<std::string> takePart(const std::string& name, std::string* row) {
  const std::size_t at = row->find("  " + name + " ");
  if (at == row->npos) return std::nullopt;
  const std::string part = row->substr(at + name.size() + 3);
  row->resize(at);
  return part == "nothing" ? "" : part;
}

void run(const Endpoint& endpoint, const std::string& verb, std::string row) {
  if (verb == "refused") {
    const std::string status = takePart("with", &row).value_or("400");
    const std::string state = takePart("on", &row).value_or("");
    endpoint.refuses(row, state, std::stoi(status));
    return;
  }
  const auto writes = takePart("writes", &row);
  const auto changes = takePart("says", &row);
  const std::string state = takePart("on", &row).value_or("");
  if (row == "nothing") row.clear();
  if (changes || row.empty())
    endpoint.accepts({{row, state, changes, writes}});
  else
    endpoint.accepts(row, state, writes);
}

class Answers : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Answers, AreTheseForTheseRequests) {
  std::ifstream file{GetParam()};
  Endpoint endpoint;
  std::string rule;
  int rows = 0;
  for (std::string line; std::getline(file, line);) {
    const std::string verb = line.substr(0, line.find(' '));
    const std::string rest = verb == line ? "" : line.substr(verb.size() + 1);
    SCOPED_TRACE(rule);
    if (verb == "#")
      rule = rest;
    else if (verb == "endpoint")
      endpoint = {rest};
    else if (verb == "shown")
      endpoint.readsBack = false;
    else if (verb == "ok" || verb == "refused")
      run(endpoint, verb, rest), ++rows;
    else if (!line.empty())
      (verb == "state"   ? endpoint.state
       : verb == "reply" ? endpoint.reply
       : verb == "key"   ? endpoint.key
                         : endpoint.writes) = rest;
  }
  EXPECT_GT(rows, 0);
}

std::vector<std::filesystem::path> answerFiles() {
  const std::filesystem::directory_iterator folder{CAMERA_SOURCE_DIR "/tests/handlers/answers"};
  std::vector<std::filesystem::path> files(begin(folder), end(folder));
  std::sort(files.begin(), files.end());
  return files;
}

INSTANTIATE_TEST_SUITE_P(All, Answers, testing::ValuesIn(answerFiles()),
                         [](const auto& file) { return file.param.stem().string(); });

}  // namespace
}  // namespace camera::test
