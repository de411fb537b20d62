// The whole camera over HTTP: what its web server serves, accepts and refuses, how httpport.cgi moves it, and
// how camera-cgi takes names that a web server never passes.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <tuple>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

constexpr char kName[] = "/cgi-bin/httpport.cgi";

std::string query(const std::string& value) {
  return std::string{kName} + "?httpport=" + value;
}

std::string form(const std::string& body) {
  return "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n\r\n" + body;
}

std::string portLine(int port) {
  return "httpport=" + std::to_string(port) + "\n";
}

// One camera for all tests; each leaves it running.
class Http : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    camera_ = std::make_unique<Camera>();
    camera_->boot();
  }
  static void TearDownTestSuite() { camera_.reset(); }

  static std::string recordBytes() { return readFile(camera_->record("httpsvr")); }

  static void expectMoved(int from, int to) {
    EXPECT_TRUE(within(30, [&] { return fetch(to, kName).status == 200; })) << "not on " << to;
    EXPECT_TRUE(within(30, [&] { return fetch(from, kName).status == 0; })) << "still on " << from;
    EXPECT_EQ(fetch(to, kName).body, portLine(to));
  }

  inline static std::unique_ptr<Camera> camera_;
};

// Each row is a valid change with one fault.
TEST_F(Http, RefusesWithAReasonAndChangesNothing) {
  const std::string before = recordBytes();
  const std::string change = query(std::to_string(freePort()));
  const std::string nul(1, '\0');
  std::string fields;
  for (int i = 0; i < 1000; ++i) fields += "X: v\r\n";
  const std::tuple<std::string, std::string, int, std::string> rows[] = {
      {"GET " + query("554"), "", 400, "message=httpport: "},
      {"GET " + change + nul, "", 400, "message=the address holds "},
      {"GET " + change + "&\x7F", "", 400, "message=the address holds "},
      {"PUT " + change, "", 405, "Allow: GET, HEAD, POST\r\n"},
      {"OPTIONS " + change, "Origin: http://b:81\r\nAccess-Control-Request-Method: GET\r\n", 405, ""},
      {"OPTIONS *", "", 405, "Allow: GET, HEAD, POST\r\n"},
      {"POST " + change, "", 411, ""},
      {"POST " + change, form(std::string(2000000, 'x')), 413, ""},
      {"GET " + change + "&" + std::string(64000, 'x'), "", 414, ""},
      {"GET " + change, "X: " + std::string(1000000, 'x') + "\r\n", 431, ""},
      {"GET " + change, fields, 431, "message=at most "},
      {"GET " + change, "Host: 127.0.0.1.example\r\n", 403, "message=Host: "},
      {"GET " + change, "Origin: null\r\n", 403, "message=Origin: "},
      {"GET " + change, "Origin: http://127.0.0.1@another.example\r\n", 403, "message=Origin: "},
      {"GET " + change, "Referer: http://another.example/127.0.0.1\r\n", 403, "message=Referer: "},
      {"GET " + change, "Sec-Fetch-Site: cross-site\r\n", 403, "message=Sec-Fetch-Site: "},
      {"GET " + change, "Sec-Fetch-Site: same-site\r\n", 403, "message=Sec-Fetch-Site: "},
      {"BREW " + change, "", 501, ""}};
  for (const auto& [line, rest, status, content] : rows) {
    const Reply reply = ask(camera_->port(), line, rest);
    EXPECT_EQ(reply.status, status) << line.substr(0, 80) << rest.substr(0, 80);
    EXPECT_TRUE(reply.body.starts_with("error=" + std::to_string(status) + "\nmessage=")) << reply.body;
    EXPECT_NE((reply.head + reply.body).find(content), std::string::npos) << reply.body;
  }
  EXPECT_EQ(recordBytes(), before);
}

TEST_F(Http, ServesWhoAsksForTheCameraItself) {
  for (const char* header :
       {"Host: localhost", "Host: CAMERA.local:1", "Host: [::1]:8080", "Origin: https://127.0.0.1:1",
        "Referer: http://127.0.0.1/page?x=http://another.example/", "Sec-Fetch-Site: same-origin",
        "Sec-Fetch-Site: none", "Range: bytes=0-3"}) {
    const Reply reply = ask(camera_->port(), std::string{"GET "} + kName, std::string{header} + "\r\n");
    EXPECT_EQ(reply.status, 200) << header;
    EXPECT_EQ(reply.body, portLine(camera_->port())) << header;
    EXPECT_NE(reply.head.find("\r\nContent-Type: text/plain; charset=utf-8\r\n"), std::string::npos);
  }
  EXPECT_TRUE(within(30, [] { return camera_->log().find("cgi_name:httpport.cgi") != std::string::npos; }));
}

TEST_F(Http, APortThatCannotBeHadIsReported) {
  int taken = 0;
  const int listener = listenSomewhere(&taken);
  camera_->get(query(std::to_string(taken)));
  const std::string refusal = "cannot listen on port " + std::to_string(taken) + " (Address already in use)";
  const Command eventLog{"send_cmd", "logd", "402"};
  EXPECT_TRUE(within(30, [&] {
    return camera_->log().find(refusal) != std::string::npos &&
           camera_->inside(eventLog).out.find(refusal) != std::string::npos;
  }));
  close(listener);
}

TEST_F(Http, TheConsoleMayBeKeptAndNotBeFramedNorLoadFromElsewhere) {
  const Reply page = camera_->get("/");
  EXPECT_EQ(page.status, 200);
  EXPECT_TRUE(page.body == camera_->get("/console/").body);
  for (const char* header :
       {"Content-Security-Policy: default-src 'none'; script-src 'self'; style-src 'self'; ",
        "; base-uri 'none'; frame-ancestors 'none'\r\n", "\r\nX-Content-Type-Options: nosniff\r\n",
        "\r\nReferrer-Policy: same-origin\r\n", "\r\nCross-Origin-Opener-Policy: same-origin\r\n",
        "\r\nCache-Control: no-cache\r\n", "\r\nContent-Type: text/html; charset=utf-8\r\n"})
    EXPECT_NE(page.head.find(header), std::string::npos) << header << page.head;
  const std::size_t tag = page.head.find("ETag: ");
  ASSERT_NE(tag, std::string::npos);
  const std::string known = page.head.substr(tag + 6, page.head.find("\r\n", tag) - tag - 4);
  EXPECT_EQ(ask(camera_->port(), "GET /", "If-None-Match: " + known).status, 304);
  EXPECT_EQ(ask(camera_->port(), "GET /", "If-None-Match: \"1\"\r\n").status, 200);
  for (const char* path :
       {"/console", "/console/none.js", "/console/.git", "/console/..%2fetc/camera/access"})
    EXPECT_EQ(camera_->get(path).status, 404) << path;
  EXPECT_NE(camera_->get(kName).head.find("\r\nCache-Control: no-store\r\n"), std::string::npos);
  const std::string type = camera_->get("/openapi.json").head;
  EXPECT_NE(type.find("\r\nContent-Type: application/json; charset=utf-8\r\n"), type.npos) << type;
}

// Without the options, no other origin is allowed and "/" is the console.
TEST(Pages, OnlyThoseThatTheUserNamesAreServedOrMaySendRequests) {
  TemporaryFolder folder;
  folder.put("index.html", "<p>");
  std::filesystem::create_symlink("/run/camera/port", folder.path("link"));
  Camera camera;
  camera.options = {"--www", folder.path(), "--allow-origin", "http://a.b", "--allow-origin", "http://b:81"};
  camera.boot();
  const std::string site = "Sec-Fetch-Site: cross-site\r\n", origin = "Origin: http://b:81\r\n" + site;
  const std::string wish = "Access-Control-Request-Method: GET\r\n";
  const std::string link =
      site + "Sec-Fetch-Mode: navigate\r\nReferer: http://c.example/\r\nSec-Fetch-Dest: ";
  const std::string allowed = "\r\nAccess-Control-Allow-Origin: http://b:81\r\n", none = "\r\nVary: Origin";
  const std::string change = "/cgi-bin/io.cgi?out1=on";
  const std::tuple<std::string, std::string, int, std::string> rows[] = {
      {"GET " + change, origin, 200, allowed},
      {"GET " + change, "Origin: http://b:82\r\n" + site, 403, none},
      {"GET " + change, "Referer: http://b:81/\r\n" + site, 403, none},
      {"OPTIONS " + change, origin + wish, 204, allowed},
      {"OPTIONS " + change, "Host: c.example\r\n" + origin + wish, 403, allowed},
      {"GET /", link + "document\r\n", 200, "\r\nContent-Type: text/html; charset=utf-8\r\n"},
      {"GET /", link + "iframe\r\n", 403, none},
      {"GET /console/", "", 200, "frame-ancestors 'none'"},
      {"GET " + change, link + "document\r\n", 403, none},
      {"GET /link", "", 403, none}};
  for (const auto& [line, rest, status, content] : rows) {
    const Reply reply = ask(camera.port(), line, rest);
    EXPECT_EQ(reply.status, status) << line << rest;
    EXPECT_NE(reply.head.find(content), std::string::npos) << line << rest << reply.head;
    EXPECT_EQ(reply.head.find("Allow-Origin") != std::string::npos, content == allowed) << line << rest;
  }
}

TEST_F(Http, OnlyTheEndpointsAndTheCardAreServed) {
  const std::filesystem::path card = camera_->state() / "sdcard" / "IPCAM";
  for (const char* name : {"clip.cgi", "clip_.cgi", "clip\n.cgi"})
    writeFile(card / name, std::string{"#!/bin/sh\necho; echo run "} + name);
  EXPECT_EQ(camera_->get("/volumes/local/clip.cgi").body, "#!/bin/sh\necho; echo run clip.cgi");
  EXPECT_EQ(camera_->get("/volumes/local/clip%0A.cgi").body, "#!/bin/sh\necho; echo run clip\n.cgi");
  std::filesystem::create_symlink("/etc/camera", card / "link");
  for (const char* path : {"/cgi-bin/nothing.cgi", "/cgi-bin/httpport", "/etc/camera/product.conf",
                           "/etc/passwd", "/cgi-bin/..%2fetc/camera/product.conf"}) {
    EXPECT_EQ(camera_->get(path).status, 404) << path;
  }
  for (const char* folder : {"/cgi-bin/", "/volumes/local/", "/volumes/local/link/product.conf"})
    EXPECT_EQ(camera_->get(folder).status, 403) << folder;
}

// Outside the sandbox, root could write to these files and have namespaces.
TEST_F(Http, NothingInTheCameraReachesTheHostsKernel) {
  const Output output = camera_->inside(
      {"bash", "-c",
       "shopt -s globstar; for f in /proc/sys/{kernel,vm,net}/** /proc/sysrq-trigger; do  [[ "
       "! -f $f ]] || { (: >>\"$f\") 2>/dev/null && echo \"$f\"; }; done; unshare -U echo "
       "unshared; bwrap --unshare-user --ro-bind / / echo cloned; grep CapBnd /proc/self/status"});
  EXPECT_EQ(output.out, "CapBnd:\t0000000000000000\n") << output.err;
  EXPECT_NE(output.err.find("unshare failed: Operation not permitted"), std::string::npos) << output.err;
}

// Changes of the PPPoE record are never merged: the second of two concurrent requests is applied again.
TEST_F(Http, AStormOfChangesIsAnsweredAndEndsInOneOfThem) {
  std::vector<int> ports(10);
  std::generate(ports.begin(), ports.end(), freePort);
  const int from = camera_->port();
  std::vector<int> statuses(40);  // each starts a process; too many at once and the server drops requests
  std::vector<std::thread> clients;
  for (std::size_t i = 0; i < statuses.size(); ++i) {
    clients.emplace_back([&, i] {
      const std::string number = std::to_string(i);
      const std::string client = "/cgi-bin/pppoe.cgi?" + (i % 4 == 0 ? "user=u" + number : "pass=p" + number);
      const std::string move = query(std::to_string(ports[i / 2 % ports.size()]));
      statuses[i] = fetch(from, i % 2 == 0 ? client : move).status;
    });
  }
  for (std::thread& client : clients) client.join();

  EXPECT_EQ(statuses, std::vector<int>(statuses.size(), 200));
  const std::string client = camera_->inside({"camera-settings", "get", "pppoe"}).out;
  EXPECT_NE(client.find("\nuser=u"), client.npos) << client;
  EXPECT_NE(client.find("\npassword=p"), client.npos) << client;
  const std::string stored = camera_->inside({"camera-settings", "get", "httpsvr", "http_port"}).out;
  const int to = std::stoi(stored.substr(stored.find('=') + 1));
  EXPECT_NE(std::find(ports.begin(), ports.end(), to), ports.end()) << to;
  expectMoved(from, to);
  for (const auto& entry : std::filesystem::directory_iterator(camera_->state() / "store/settings"))
    EXPECT_NE(std::string{"httpsvr pppoe sd"}.find(entry.path().filename()), std::string::npos)
        << entry.path();
}

TEST_F(Http, OnlyTheExactNameStartsTheEndpoint) {
  const std::string cut(250, 'x');
  const std::tuple<std::string, std::string, bool> rows[] = {
      {"/some/where/httpport.cgi", "httpport.cgi", true},
      {"HTTPPORT.CGI", "HTTPPORT.CGI", false},
      {"/" + cut + "/httpport.cgi", "htt", false},
      {"/" + cut + cut, cut + "xxxx", false}};
  for (const auto& [argv0, announced, known] : rows) {
    const Output output = camera_->inside(
        {"env", "-i", "/bin/bash", "-c", "exec -a \"$0\" /usr/lib/camera/bin/camera-cgi", argv0});
    EXPECT_EQ(output.status, 0) << argv0;
    EXPECT_EQ(output.err, "cgi_name " + announced + "\n") << argv0;
    EXPECT_EQ(output.out.starts_with("Status: 200 OK\r\n"), known) << argv0;
    EXPECT_EQ(output.out.empty(), !known) << argv0;
  }
}

TEST_F(Http, TheSimulatorTakesItsOwnCommandsFromThisMachineAlone) {
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

TEST_F(Http, TheLogGoesOnWhereItWasLeft) {
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

TEST_F(Http, ABackupIsRestoredWholeOrNotAtAll) {
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
  camera_->get(query(std::to_string(to)));
  expectMoved(from, to);

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
  expectMoved(to, from);
  EXPECT_TRUE(camera_->get("/cgi-bin/camera_info.cgi").body.starts_with("name=before\n"));
}

}  // namespace
}  // namespace camera::test
