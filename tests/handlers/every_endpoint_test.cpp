// What holds for every endpoint of the table: one whole reply to anything, nothing changed by a bad request,
// a section in the documentation.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "framework/cgi_table.h"
#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

TEST(EveryEndpoint, AnswersAHostileRequestOnceAndChangesNothing) {
  const std::string hostile[] = {"nobody=1",
                                 "=",
                                 "%00=%00",
                                 "a%0d%0aStatus:=200",
                                 std::string(60000, 'x') + "=1",
                                 "x=" + std::string(70000, 'y'),
                                 "'%3breboot%3b'=$(reboot)",
                                 "../../etc=%ff%fe"};
  for (const CgiEntry& entry : cgiTable()) {
    for (const std::string& query : hostile) {
      scripted().reset();
      const Reply reply = request(entry.name, query);
      EXPECT_TRUE(reply.status >= 400 && reply.status <= 500) << entry.name << "?" << query.substr(0, 40);
      EXPECT_EQ(reply.body, "error=" + std::to_string(reply.status) + " ")
          << entry.name << "?" << query.substr(0, 40);
      EXPECT_EQ(scripted().writes(), "") << entry.name << "?" << query.substr(0, 40);
    }
  }
}

TEST(EveryEndpoint, IsDocumented) {
  std::ifstream file(CAMERA_SOURCE_DIR "/docs/api.md");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  for (const CgiEntry& entry : cgiTable()) {
    EXPECT_NE(text.find("\n## " + std::string{entry.name} + "\n"), text.npos) << entry.name;
  }
}

}  // namespace
}  // namespace camera::test
