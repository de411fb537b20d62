// What the web server has for the console beside the endpoints: the simulator's commands, the log and
// backups.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <tuple>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

std::string form(const std::string& body) {
  return "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n\r\n" + body;
}

// One camera for all tests.
class Console : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    camera_ = std::make_unique<Camera>();
    camera_->boot();
  }
  static void TearDownTestSuite() { camera_.reset(); }

  inline static std::unique_ptr<Camera> camera_;
};

TEST_F(Console, TheSimulatorTakesItsOwnCommandsFromThisMachineAlone) {
  const Reply list = camera_->get("/simulator");
  EXPECT_NE(list.body.find(R"({"name":"input","usage":"input NUMBER on|off; NUMBER 1 to 4","help":"a )"),
            std::string::npos)
      << list.body;
  const std::tuple<std::string, int, std::string> rows[] = {
      {"command=input+1%20on", 200, ""},
      {"command=input 1 maybe", 400, "error=400\nmessage=usage: input NUMBER on|off; NUMBER 1 to 4\n"},
      {"command=input 1 off;input 1 on", 400, "error=400\nmessage=usage: input "},
      {"command=input 2 on\ninput 3 on", 400, "error=400\nmessage=usage: input "},
      {"command=$(reboot)", 400, "error=400\nmessage=no command $(reboot); see --help\n"},
      {"command=fill-card /", 400, "error=400\nmessage=no command fill-card; see --help\n"},
      {"command=send logd 402", 400, "error=400\nmessage=no command send; see --help\n"},
      {"command=status&state=/", 400, "error=400\nmessage=state: no such parameter\n"},
      {"", 400, "error=400\nmessage=command: "},
      {"command=" + std::string(65530, 'x'), 400, "error=400\nmessage="}};
  for (const auto& [body, status, start] : rows) {
    const Reply reply = ask(camera_->port(), "POST /simulator", form(body));
    EXPECT_EQ(reply.status, status) << body.substr(0, 80);
    EXPECT_TRUE(reply.body.starts_with(start)) << reply.body;
  }
  EXPECT_EQ(camera_->get("/simulator?command=input+1+off").status, 400);
  EXPECT_NE(ask(camera_->port(), "POST /simulator", form("command=status"))
                .body.find("\ninput1=on\ninput2=off\ninput3=off\n"),
            std::string::npos);
  for (const auto& [peer, status] : {std::pair{"127.0.0.2", "200"},
                                     {"::1", "200"},
                                     {"::ffff:127.0.0.1", "200"},
                                     {"12.7.0.1", "403"},
                                     {"::ffff:192.168.0.127", "403"},
                                     {"", "403"}}) {
    const Output output = camera_->inside(
        {"env", std::string{"REMOTE_ADDR="} + peer, "REQUEST_METHOD=GET", "/services/simulator"});
    EXPECT_TRUE(output.out.starts_with(std::string{"Status: "} + status)) << peer << output.out;
  }
}

TEST_F(Console, TheLogGoesOnWhereItWasLeft) {
  const auto log = [](const std::string& line) {
    EXPECT_EQ(ask(camera_->port(), "POST /simulator", form("command=log " + line)).status, 200);
  };
  log("first");
  const Reply before = camera_->get("/log");
  EXPECT_TRUE(before.body.ends_with(" first\n"));
  const std::size_t header = before.head.find("\r\nX-Log-Size: ");
  ASSERT_NE(header, std::string::npos);
  const long size = std::stol(before.head.substr(header + 14));
  const std::string after = "/log?after=" + std::to_string(size);
  EXPECT_EQ(camera_->get(after).body, "");
  log("second");
  const std::string second = camera_->get(after).body;
  EXPECT_TRUE(second.ends_with(" second\n") && second.size() == 27) << second;
  for (const long elsewhere : {size - 1, size + 1, size + 27 + 1})
    EXPECT_EQ(camera_->get("/log?after=" + std::to_string(elsewhere)).body, before.body + second)
        << elsewhere;
  for (const char* query :
       {"after=-1", "after=1;reboot", "after=1%0a", "after=1111111111", "after=1&after=2", "x=1"})
    EXPECT_EQ(camera_->get(std::string{"/log?"} + query).status, 400) << query;
}

TEST_F(Console, ABackupIsRestoredWholeOrNotAtAll) {
  const auto rename = [](const char* name) {
    EXPECT_EQ(camera_->get(std::string{"/cgi-bin/camera_info.cgi?name="} + name).status, 200);
  };
  const auto restore = [](const std::string& backup) {
    return ask(camera_->port(), "POST /backup", form(backup));
  };
  const int from = camera_->port();
  rename("before");
  const Reply backup = camera_->get("/backup");
  EXPECT_NE(backup.head.find("\r\nContent-Disposition: attachment; filename="), std::string::npos)
      << backup.head;
  EXPECT_NE(backup.head.find("\r\nCache-Control: no-store\r\n"), std::string::npos) << backup.head;
  rename("after");
  const int to = freePort();
  camera_->get("/cgi-bin/httpport.cgi?httpport=" + std::to_string(to));
  EXPECT_TRUE(within(30, [&] { return fetch(to, "/log").status == 200; }));

  std::string wrong = backup.body;
  const std::size_t at = wrong.find("httpsvr.http_port=") + 18;
  wrong.insert(at, "9");
  const auto line = 1 + std::count(wrong.begin(), wrong.begin() + static_cast<std::ptrdiff_t>(at), '\n');
  const std::string fault = "error=400\nmessage=LINE " + std::to_string(line) + ": httpsvr.http_port: ";
  EXPECT_TRUE(restore(wrong).body.starts_with(fault)) << restore(wrong).body;
  for (const std::string& part :
       {std::string{}, backup.body.substr(0, backup.body.size() - 9), backup.body + "x\n"})
    EXPECT_EQ(restore(part).status, 400);
  EXPECT_TRUE(camera_->get("/cgi-bin/camera_info.cgi").body.starts_with("name=after\n"));

  EXPECT_EQ(restore(backup.body).status, 200);
  EXPECT_TRUE(within(30, [&] { return fetch(from, "/log").status == 200; }));
  EXPECT_TRUE(camera_->get("/cgi-bin/camera_info.cgi").body.starts_with("name=before\n"));
}

}  // namespace
}  // namespace camera::test
