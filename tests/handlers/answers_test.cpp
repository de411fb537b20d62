// Runs the rows of the files in answers/: requests, the states of the camera, and the replies. Lines:
//
//   # RULE                         the rule that the rows below test
//   endpoint CGI                   the endpoint of the rows below; these lines may follow it:
//   state STATE                      the state of every row, in the words of ScriptedPlatform::store
//   reply LINES                      the lines of the plain read's reply, joined by &
//   writes CALLS                     the calls with which a change is written
//   key QUERY                        the query of the plain read
//   shown only                       a plain read afterwards may give another reply
//   ok QUERIES  on STATE  says CHANGES  writes CALLS  ignores NAMES
//   refused QUERIES  on STATE  with STATUS  saying TEXT
//
// Two spaces separate the parts of a row. They are those of Row and refuses() in endpoint.h; all but the
// queries may be left out. A row with says has one query. The word nothing stands for an empty part.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

// Removes the part after "  NAME " from the row and returns it; nothing if the row has none.
std::optional<std::string> takePart(const std::string& name, std::string* row) {
  const std::size_t at = row->find("  " + name + " ");
  if (at == row->npos) return std::nullopt;
  const std::string part = row->substr(at + name.size() + 3);
  row->resize(at);
  return part == "nothing" ? "" : part;
}

void run(const Endpoint& endpoint, const std::string& verb, std::string row) {
  if (verb == "refused") {
    const std::string text = takePart("saying", &row).value_or("");
    const std::string status = takePart("with", &row).value_or("400");
    const std::string state = takePart("on", &row).value_or("");
    endpoint.refuses(row, state, std::stoi(status), text);
    return;
  }
  const std::string ignores = takePart("ignores", &row).value_or("");
  const auto writes = takePart("writes", &row);
  const auto changes = takePart("says", &row);
  const std::string state = takePart("on", &row).value_or("");
  if (row == "nothing") row.clear();
  if (changes || row.empty() || !ignores.empty())
    endpoint.accepts({{row, state, changes, writes, ignores}});
  else
    endpoint.accepts(row, state, writes);
}

class Answers : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(Answers, AreTheseForTheseRequests) {
  std::ifstream file{GetParam()};
  Endpoint endpoint;
  const std::map<std::string, std::string*> parts{{"state", &endpoint.state},
                                                  {"reply", &endpoint.reply},
                                                  {"writes", &endpoint.writes},
                                                  {"key", &endpoint.key}};
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
    else if (const auto part = parts.find(verb); part != parts.end())
      *part->second = rest;
    else if (verb == "ok" || verb == "refused") {
      run(endpoint, verb, rest);
      ++rows;
    } else {
      EXPECT_EQ(line, "") << "no such line";
    }
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
