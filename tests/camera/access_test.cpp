// The whole camera: who may call which endpoint, and which files of the card are served.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <atomic>
#include <cstdio>
#include <deque>
#include <tuple>
#include <vector>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

constexpr char kAdmin[] = R"(admin:a:b#"\'=c)";
constexpr char kRoot[] = R"(root:a:b#"\'=c)";
constexpr char kBob[] = "b.o_b-1:=:=";

struct Guarded : Camera {
  Guarded() { boot(); }
  // Returns the status for a client that logs in as NAME:PASSWORD, or does not log in if that is empty.
  std::string status(const std::string& account, const std::string& path) {
    Command curl{"curl", "-s", "-o", "/dev/null", "-w", "%{http_code}", "--path-as-is", "--digest"};
    if (!account.empty()) curl.insert(curl.end(), {"-u", account});
    curl.push_back("http://127.0.0.1:" + std::to_string(port()) + path);
    return run(curl).out;
  }
  // "0100007F" is the loopback address, "00000000" stands for all addresses.
  bool listensOn(const char* address) const {
    char socket[40];
    std::snprintf(socket, sizeof socket, "%s:%04X 00000000:0000 0A", address, static_cast<unsigned>(port()));
    return readFile("/proc/net/tcp").find(socket) != std::string::npos;
  }
};

// Each request depends on those before it.
TEST(Access, AnAccountMayCallWhatItsPrivilegesAllowWhileItIsStored) {
  Guarded camera;
  EXPECT_EQ(camera.status("", "/cgi-bin/network.cgi"), "200");
  EXPECT_TRUE(camera.listensOn("0100007F"));
  const char* const rows[][3] = {{"", "/cgi-bin/user_mod.cgi?name=admin&password=YTpiIyJcJz1j", "200"},
                                 {"", "/cgi-bin/info.cgi", "401"},
                                 {"", "/", "401"},
                                 {"admin:b", "/cgi-bin/network.cgi", "401"},
                                 {kAdmin, "/cgi-bin/network.cgi", "200"},
                                 {kAdmin, "/volumes/local/none", "404"},
                                 {kAdmin, "/cgi-bin/user_mod.cgi?name=b.o_b-1&password=PTo9", "200"},
                                 {kBob, "/cgi-bin/info.cgi", "200"},
                                 {kBob, "/cgi-bin/speaker.cgi", "200"},
                                 {kBob, "/", "200"},
                                 {kBob, "/console/index.html", "200"},
                                 {"", "/console/index.html", "401"},
                                 {"", "/events", "401"},
                                 {kBob, "/log", "403"},
                                 {kBob, "/backup", "403"},
                                 {kBob, "/simulator", "403"},
                                 {kAdmin, "/log", "200"},
                                 {kAdmin, "/backup", "200"},
                                 {kAdmin, "/simulator", "200"},
                                 {kBob, "/snapshot.jpg", "200"},
                                 {"", "/snapshot.jpg", "401"},
                                 {kAdmin, "/cgi-bin/stream_auth.cgi?snapshoturl=off", "200"},
                                 {"", "/snapshot.jpg", "200"},
                                 {"", "/snapshot.jpg?profile=5", "400"},
                                 {"", "/video.mjpg", "401"},
                                 {"", "/snapshot.jpg%2f..%2fcgi-bin/info.cgi", "401"},
                                 {kAdmin, "/cgi-bin/stream_auth.cgi?snapshoturl=on", "200"},
                                 {"", "/snapshot.jpg", "401"},
                                 {kBob, "/cgi-bin/network.cgi", "403"},
                                 {kBob, "/cgi-bin/info.cgi%2f..%2fnetwork.cgi", "403"},
                                 {kBob, "/cgi-bin/network.cgi/info.cgi", "403"},
                                 {kBob, "/cgi-bin/none.cgi", "403"},
                                 {kBob, "/volumes/local/none", "403"},
                                 {kAdmin, "/cgi-bin/user_mod.cgi?name=eve", "200"},
                                 {"eve:", "/cgi-bin/info.cgi", "401"},
                                 {kAdmin, "/cgi-bin/user_del.cgi?name=b.o_b-1", "200"},
                                 {kBob, "/cgi-bin/info.cgi", "401"},
                                 {kAdmin, "/cgi-bin/user_mod.cgi?name=admin&newname=root", "200"},
                                 {kAdmin, "/cgi-bin/info.cgi", "401"},
                                 {kRoot, "/cgi-bin/info.cgi", "200"}};
  for (const auto& [account, path, status] : rows)
    EXPECT_EQ(camera.status(account, path), status) << account << " " << path;
  EXPECT_TRUE(camera.listensOn("00000000"));
  EXPECT_EQ(ask(camera.port(), "GET /snapshot.jpg", "Host: 127.0.0.1\r\nCamera-Open: 1\r\n").status, 401);
  camera.inside({"camera-settings", "set", "httpsvr", "livevideo=0"});
  EXPECT_TRUE(within(30, [&] { return camera.status("", "/video.mjpg?profile=0") == "400"; }));

  // The record changes without an endpoint, and its file is older than the accounts, as if the clock had been
  // set back.
  camera.inside({"flock", "/var/lib/camera/settings", "sh", "-c",
                 "cd /var/lib/camera/settings; echo >.new; touch -d 2001-01-01 .new; mv .new account"});
  EXPECT_TRUE(within(30, [&] { return camera.status(kRoot, "/cgi-bin/info.cgi") == "401"; }));
  camera.inside({"camera-settings", "reset", "account"});
  EXPECT_TRUE(within(30, [&] { return camera.status("", "/cgi-bin/network.cgi") == "200"; }));
  EXPECT_TRUE(camera.listensOn("0100007F"));
}

TEST(Access, AnEventStreamLastsAsLongAsItsAccount) {
  Guarded camera;
  EXPECT_EQ(camera.status("", "/cgi-bin/user_mod.cgi?name=admin&password=YTpiIyJcJz1j"), "200");
  EXPECT_EQ(camera.status(kAdmin, "/cgi-bin/user_mod.cgi?name=b.o_b-1&password=PTo9"), "200");
  TemporaryFolder folder;
  const std::string out = folder.path("out");
  const pid_t listener = start({"curl", "-sNi", "--digest", "-u", kBob, "-m", "60",
                                "http://127.0.0.1:" + std::to_string(camera.port()) + "/events"},
                               "/dev/null", out, folder.path("err"));
  EXPECT_TRUE(
      within(30, [&] { return readFile(out).find("\nevent: status\ndata: {\"time\":\"") != out.npos; }));
  EXPECT_NE(readFile(out).find("\r\nContent-Type: text/event-stream\r\n"), std::string::npos)
      << readFile(out);
  EXPECT_EQ(camera.status(kAdmin, "/cgi-bin/user_del.cgi?name=b.o_b-1"), "200");
  EXPECT_EQ(waitFor(listener), 0) << "curl ran out of time";
}

// Requests whose head or body ends after the change that took their right away, and a stream.
TEST(Access, NoRequestIsCarriedOutWithARightOfBefore) {
  Guarded camera;
  const std::string rest = "Host: 127.0.0.1\r\nConnection: close\r\n";
  const Connection head(camera.port()), body(camera.port()), stream(camera.port());
  head.send("GET /cgi-bin/io.cgi?out1=on HTTP/1.1\r\n");
  body.send("POST /cgi-bin/io.cgi HTTP/1.1\r\nContent-Type: application/x-www-form-urlencoded\r\n" + rest +
            "Content-Length: 7\r\n\r\nout2");
  stream.send("GET /video.mjpg HTTP/1.1\r\n" + rest + "\r\n");
  // curl logs in, then sends the body as it comes.
  const auto later = [&](const std::string& account, const std::string& change) {
    return camera
        .run({"bash", "-c",
              "(printf out3=; sleep 1; curl -s --digest -u \"$1\" \"$3$4\" >&2; printf on) |"
              " curl -s --digest -u \"$2\" -X POST -T . -H Expect: -H 'Content-Type: "
              "application/x-www-form-urlencoded' \"$3/cgi-bin/io.cgi\"",
              "bash", kAdmin, account, "http://127.0.0.1:" + std::to_string(camera.port()), change})
        .out;
  };
  EXPECT_EQ(camera.status("", "/cgi-bin/user_mod.cgi?name=admin&password=YTpiIyJcJz1j"), "200");
  head.send(rest + "\r\n");
  body.send("=on");
  EXPECT_TRUE(head.receive().starts_with("HTTP/1.1 503 "));
  EXPECT_TRUE(body.receive().starts_with("HTTP/1.1 503 "));
  EXPECT_TRUE(stream.receive().starts_with("HTTP/1.1 200 "));  // and ends

  EXPECT_EQ(camera.status(kAdmin, "/cgi-bin/user_mod.cgi?name=b.o_b-1&password=PTo9"), "200");
  EXPECT_NE(later(kBob, "/cgi-bin/info.cgi").find("out3=on\n"), std::string::npos);
  EXPECT_EQ(later(kBob, "/cgi-bin/user_del.cgi?name=b.o_b-1").substr(0, 10), "error=503\n");
}

// The login is what curl sent, so that its nonce is the camera's.
TEST(Access, ALoginIsAcceptedOnceAndGuessingIsSlow) {
  Guarded camera;
  EXPECT_EQ(camera.status("", "/cgi-bin/user_mod.cgi?name=admin&password=YTpiIyJcJz1j"), "200");
  const std::string sent = camera
                               .run({"curl", "-sv", "--digest", "-u", kAdmin, "-d", "out1=on",
                                     "http://127.0.0.1:" + std::to_string(camera.port()) + "/cgi-bin/io.cgi"})
                               .err;
  const std::size_t begin = sent.find("> Authorization: Digest ") + 2;
  const std::string login = sent.substr(begin, sent.find_first_of("\r\n", begin) - begin) + "\r\n";
  const std::string form = "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: 7\r\n";
  const Reply again = ask(camera.port(), "POST /cgi-bin/io.cgi", login + form + "\r\nout2=on");
  EXPECT_EQ(again.status, 401);
  EXPECT_NE(again.head.find(", stale=true\r\n"), again.head.npos) << again.head;
  EXPECT_EQ(ask(camera.port(), "GET /cgi-bin/io.cgi", login).status, 401);

  const std::size_t limit = 30 * 1024;
  const std::string longest = "/cgi-bin/io.cgi?" + std::string(limit - 16, 'x');
  EXPECT_EQ(camera.status(kAdmin, longest), "400");
  EXPECT_EQ(camera.status(kAdmin, longest + "x"), "414");

  // Nothing of a request is logged, and a log is not larger than its limit.
  const std::string before = ask(camera.port(), "GET /", "").head;
  const std::size_t quote = before.find("nonce=\"") + 7;
  const std::string nonce = before.substr(quote, before.find('"', quote) - quote);
  const auto forged = [&](const std::string& user, const std::string& more) {
    return "Authorization: Digest username=\"" + user + "\", realm=\"camera\", nonce=\"" + nonce +
           "\", uri=\"/?secret\", response=\"" + std::string(32, '0') + more + "\"\r\n";
  };
  EXPECT_EQ(
      ask(camera.port(), "GET /?secret", "Authorization: Digest " + std::string(2000, 'x') + "\r\n").status,
      431);
  for (const char* more : {"secret", "\", qop=\"auth-int secret", "\", response=\"secret"})
    EXPECT_EQ(ask(camera.port(), "GET /?secret", forged("admin", more)).status, 401) << more;
  EXPECT_EQ(ask(camera.port(), "GET /?other", forged("admin", "")).status, 400);

  std::vector<std::thread> clients;
  std::atomic<int> slowed{0};
  for (int i = 0; i < 30; ++i)
    clients.emplace_back(
        [&] { slowed += ask(camera.port(), "GET /?secret", forged("admin", "")).status == 429; });
  for (std::thread& client : clients) client.join();
  EXPECT_GE(slowed, 15);
  EXPECT_LE(slowed, 20);
  EXPECT_EQ(ask(camera.port(), "GET /?secret", forged("ann", "")).status, 401);
  const std::string log = readFile(camera.state() / "log" / "lighttpd.log");
  EXPECT_NE(log.find("wrong password"), log.npos);
  EXPECT_EQ(log.find("secret"), log.npos) << log;
}

// The web server sees the clock of the day through a library. It must not start again either.
TEST(Access, ALoginIsAcceptedOnceAlsoIfTheClockJumps) {
  constexpr char kScript[] = R"(
    camera-settings set account admin_password=a && refreshAccounts && mkdir -p /run/camera/errors && echo +0 >/tmp/clock
    export CAMERA_ADDRESS=127.0.0.1 CAMERA_PORT=8700 CAMERA_PID_FILE=/tmp/pid CAMERA_CARD=/mnt/usb CAMERA_SECRET=x
    export CAMERA_GUARD=/etc/camera/guarded.conf page=http://127.0.0.1:8700/console/index.html
    export FAKETIME_TIMESTAMP_FILE=/tmp/clock FAKETIME_NO_CACHE=1 FAKETIME_DONT_FAKE_MONOTONIC=1
    LD_PRELOAD='/usr/$LIB/faketime/libfaketime.so.1' /usr/sbin/lighttpd -f /etc/camera/lighttpd.conf
    login=$(curl -sv --digest -u admin:a $page 2>&1 | sed -n 's/^> \(Authorization: .*\)\r$/\1/p')
    for clock in +800 +1600 +9000 -100 -200 +0; do
      echo $clock >/tmp/clock
      sleep 1.2
      curl -so /dev/null -w "%{http_code} " --digest -u admin:a $page
    done
    curl -so /dev/null -w "%{http_code}" -H "$login" $page)";
  const Output output = Camera().inside({"bash", "-c", kScript});
  EXPECT_EQ(output.out, "200 200 200 200 200 200 401") << output.err;
}

// The refresh fails, and the web server is not there to be restarted.
TEST(Access, AnAccountChangeThatDoesNotTakeEffectFails) {
  Camera camera;
  const auto create = [&](const std::string& name, const std::string& obstacle) {
    return camera
        .inside({"sh", "-c",
                 obstacle +
                     "; echo '# 1 guarded' >/run/accounts/logins; export ACCOUNTS=1 REQUEST_METHOD=GET;" +
                     "export QUERY_STRING=name=" + name +
                     "; answer /cgi-bin/user_mod.cgi; cat /run/accounts/logins"})
        .out;
  };
  EXPECT_TRUE(create("ann", ":").starts_with("Status: 200 OK\r\n"));
  const std::string reply = create("bob", "mkdir /run/accounts/logins.new");
  EXPECT_TRUE(reply.starts_with("Status: 500\r\n")) << reply;
  EXPECT_EQ(reply.find("guarded"), reply.npos) << "the old accounts can still log in";
}

TEST(Access, ALogHasALimit) {
  Camera camera;
  camera.inside({"sh", "-c",
                 "for i in 1 2 3; do { seq 30000; echo '/cgi?secret'; } | /usr/lib/camera/bin/keepLog "
                 "lighttpd.log; done"});
  const std::filesystem::path log = camera.state() / "log" / "lighttpd.log";
  EXPECT_LE(std::filesystem::file_size(log), 262'144u);
  EXPECT_LE(std::filesystem::file_size(log.string() + ".0"), 262'144u);
  EXPECT_TRUE(readFile(log).ends_with("30000\n/cgi?...\n"));
}

// Each connection sends a byte now and then. The limits are 64 connections of an address and 10 s for a
// request.
TEST(Access, SlowClientsKeepNobodyOut) {
  const rlimit enough{4096, 4096};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &enough), 0);
  Guarded camera;
  const std::string request = "GET /cgi-bin/info.cgi HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n";
  const auto seconds = [&](const char* from) {
    const auto begun = std::chrono::steady_clock::now();
    const Connection connection(camera.port(), from);
    connection.send(request + "\r\n");
    EXPECT_TRUE(connection.receive().starts_with("HTTP/1.1 200 ")) << from;
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
  };
  const Connection early(camera.port(), "127.0.0.5"), late(camera.port(), "127.0.0.5");
  late.send("G");
  early.send(request + "\r\n");
  EXPECT_TRUE(early.receive().starts_with("HTTP/1.1 200 "));
  const Connection body(camera.port(), "127.0.0.5");
  body.send(
      "POST /cgi-bin/io.cgi HTTP/1.1\r\nHost: 127.0.0.1\r\nExpect: 100-continue\r\nContent-Length: "
      "7\r\n\r\n");
  std::deque<Connection> slow;
  for (int i = 0; i < 1500; ++i) slow.emplace_back(camera.port(), "127.0.0.2").send("G");
  for (int i = 0; i < 500; ++i)
    slow.emplace_back(camera.port(), ("127.0.1." + std::to_string(1 + i % 10)).c_str()).send("G");
  for (int second = 0; second < 12; ++second) {
    EXPECT_LT(seconds("127.0.0.2"), 1);
    EXPECT_LT(seconds("127.0.0.3"), 1);
    for (const Connection& connection : slow) connection.send("E");
    late.send(second == 0 ? request.substr(1) : "X: x\r\n");
    if (second >= 6) body.send("x");
    std::this_thread::sleep_for(std::chrono::seconds(1));
  }
  late.send("\r\n");
  EXPECT_EQ(late.receive(), "");
  body.send("x");
  EXPECT_EQ(body.receive(), "HTTP/1.1 100 Continue\r\n\r\n");
}

// Any page can make its visitor's browser send these; over HTTP it may send nothing that says from where.
TEST(Access, ABrowserChangesTheCameraOnlyFromTheCamerasOwnPage) {
  Guarded camera;
  const std::string own = "127.0.0.1:" + std::to_string(camera.port());
  const std::string agent = "User-Agent: Mozilla/5.0 (X11; Linux x86_64)\r\n", site = "Sec-Fetch-Site: ";
  const std::string host = "Host: " + own + "\r\n", browser = host + agent;
  const std::string change = "GET /cgi-bin/io.cgi?out1=on", read = "GET /cgi-bin/io.cgi";
  const std::string form = "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: 7\r\n";
  const std::tuple<std::string, std::string, int> rows[] = {
      {change, browser, 403},
      {change, host + "Sec-CH-UA: \"x\"\r\n", 403},
      {change, host + "Upgrade-Insecure-Requests: 1\r\n", 403},
      {change, browser + site + "none\r\n", 403},
      {change, browser + site + "none\r\nReferer: http://" + own + "/\r\n", 403},
      {change, browser + "Referer: http://127.0.0.1:1/\r\n", 403},
      {"GET /cgi-bin/%69o.cgi?out1=on", browser, 403},
      {"GET /cgi-bin/io.cgi/audio.cgi?out1=on", browser, 403},
      {"GET /cgi-bin/video.cgi?profileid=1&framerate=5", browser, 403},
      {"POST /cgi-bin/io.cgi", browser + form + "\r\nout1=on", 403},
      {"GET /console/", browser + "Referer: http://a.example/\r\n", 200},
      {"GET /console/?", browser + "Referer: http://a.example/\r\n", 403},
      {change, browser + site + "same-origin\r\n", 200},
      {change, browser + "Referer: http://" + own + "/\r\n", 200},
      {"POST /cgi-bin/io.cgi", browser + "Origin: http://" + own + "\r\n" + form + "\r\nout1=on", 200},
      {read, browser, 200},
      {read, browser + site + "none\r\n", 200},
      {"GET /cgi-bin/sdcard_list.cgi?page=1", browser, 200},
      {"GET /cgi-bin/video.cgi?profileid=1", browser, 200},
      {"GET /snapshot.jpg?profile=2", browser, 200},
      {change, host + "User-Agent: curl/7.88.1\r\n", 200},
      {change, host + "User-Agent: node\r\nSec-Fetch-Mode: cors\r\n", 200},
      {change, host + "Referer: http://127.0.0.1/\r\n", 200},
      {read, "Host: 0.0.0.0\r\n", 403},
      {read, "Host: 00.0.0.0\r\n", 403},
      {read, "Host: [::]\r\n", 403},
      {read, "Host: [::FFFF:127.0.0.1]\r\n", 403},
      {read, "Host: [0:0:0:0:0:ffff:7f00:1]\r\n", 403},
      {read, "Host: ip6-localhost\r\n", 403},
      {read, "Host: 10.0.0.1\r\n", 200},
      {read, "Host: [2001:db8::ffff:1]\r\n", 200}};
  for (const auto& [line, rest, status] : rows)
    EXPECT_EQ(ask(camera.port(), line, rest).status, status) << line << "\n" << rest;
}

TEST(Access, TheListNamesEveryEndpointOnce) {
  const Output output = Camera().run(
      {"bash", "-c",
       "cd '" CAMERA_SOURCE_DIR
       "'; sed -n 's/.*{\"\\([a-z0-9_]*\\.cgi\\)\".*/\\1/p' framework/endpoint_list.h | sort |"
       " diff - <(grep -E '^[a-z0-9_.]+ +(administrator|any|ptz|outputs|speaker|mic|video|notify)$'"
       " virtual-camera/access | cut -d ' ' -f 1)"});
  EXPECT_EQ(output.out + output.err, "");
}

TEST(Access, TheCardGivesItsFilesAndNothingElseAndIsEmptiedByAFormat) {
  Guarded camera;
  const std::filesystem::path card = camera.state() / "sdcard";
  const std::string recording(2'000'000, 'r');
  writeFile(card / "IPCAM" / "a.avi", recording);
  const Reply reply = camera.get("/volumes/local/a.avi");
  EXPECT_NE(reply.head.find("\r\nContent-Type: video/x-msvideo\r\n"), std::string::npos);
  EXPECT_TRUE(reply.body == recording);

  writeFile(card / "outside", "outside");
  std::filesystem::create_symlink("../outside", card / "IPCAM" / "link");
  for (const char* path :
       {"..%2foutside", "%2e%2e/outside", "x/../../outside", "outside", "/mnt/usb/outside"})
    EXPECT_EQ(camera.get(std::string{"/volumes/local/"} + path).status, 404) << path;
  EXPECT_EQ(camera.get("/volumes/local/link").status, 403);

  const Output format = camera.inside(
      {"sh", "-c",
       "sdmanage.sh format & sleep 0.5; camera-settings get sd state; wait $!; camera-settings get sd"});
  EXPECT_EQ(format.status, 0) << format.err;
  for (const char* line : {"state=9\n", "state=2\n", "free=15558144\nused=0\n"})
    EXPECT_NE(format.out.find(line), std::string::npos) << format.out;
  EXPECT_TRUE(std::filesystem::is_empty(card));
}

}  // namespace
}  // namespace camera::test
