// The whole camera: httpport.cgi over HTTP, and the program under the names and streams a web server never
// gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

constexpr char kName[] = "/cgi-bin/httpport.cgi";

std::string query(const std::string& value) {
  return std::string{kName} + "?httpport=" + value;
}

std::string portLine(int port) {
  return "httpport=" + std::to_string(port) + "\n";
}

// One camera for all tests: each leaves it answering.
class HttpPort : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    camera_ = new Camera;
    camera_->boot();
  }
  static void TearDownTestSuite() {
    delete camera_;
    camera_ = nullptr;
  }

  static Camera& camera() { return *camera_; }
  static std::string recordBytes() { return readFile(camera_->record("httpsvr")); }

  // Within two seconds it answers on the one port and no longer on the other.
  static void expectMoved(int from, int to) {
    EXPECT_TRUE(within(2, [&] { return fetch(to, kName).status == 200; })) << "not on " << to;
    EXPECT_TRUE(within(0.5, [&] { return fetch(from, kName).status == 0; })) << "still on " << from;
    EXPECT_EQ(fetch(to, kName).body, portLine(to));
  }

 private:
  inline static Camera* camera_ = nullptr;
};

TEST_F(HttpPort, AReadAnswersTheStoredPortAndIsLogged) {
  const Reply reply = camera().get(kName);
  EXPECT_EQ(reply.status, 200);
  EXPECT_EQ(reply.body, portLine(camera().port()));
  EXPECT_EQ(reply.headers.at("content-type"), "text/plain; charset=utf-8");
  EXPECT_EQ(reply.headers.at("content-length"), std::to_string(reply.body.size()));
  EXPECT_TRUE(within(2, [] { return camera().log().find("cgi_name:httpport.cgi") != std::string::npos; }));
}

TEST_F(HttpPort, ABadRequestChangesNothing) {
  ASSERT_EQ(camera().settings({"set", "httpsvr", "alt_port=8443"}).status, 0);
  const std::string before = recordBytes();
  const std::string bad[] = {"nothttpport=81",
                             "HTTPPORT=81",
                             "httpport=",
                             "httpport",
                             "httpport=0",
                             "httpport=65536",
                             "httpport=-80",
                             "httpport=80a",
                             "httpport=--80",
                             "httpport=+80",
                             "httpport=%2080",
                             "httpport=80%00",
                             "httpport=%00",
                             "httpport=99999999999999999999",
                             "httpport=4294967376",
                             "httpport=554",
                             "httpport=8443",
                             "httpport=81&other=1",
                             "httpport=" + std::string(1000000, '1'),
                             "httpport=81&other=" + std::string(60000, 'x')};
  for (const std::string& text : bad) {
    const Reply reply = camera().get(std::string{kName} + "?" + text);
    EXPECT_EQ(reply.status, 400) << text.substr(0, 60);
    EXPECT_EQ(reply.body, "error=400\n") << text.substr(0, 60);
  }
  EXPECT_EQ(camera().post("httpport.cgi", "httpport=81&x=" + std::string(70000, 'x')).status, 400);
  EXPECT_EQ(camera().post("httpport.cgi", "httpport=0").status, 400);
  EXPECT_EQ(recordBytes(), before);
}

TEST_F(HttpPort, AContentLengthThatLiesIsABadRequest) {
  const std::string body = "httpport=81";
  const std::string before = recordBytes();
  for (const char* length : {"12", "10", "0", "-1", "11x", "65537", "99999999999999999999"}) {
    const Output output = camera().runOnce("httpport.cgi",
                                           {{"REQUEST_METHOD", "POST"},
                                            {"CONTENT_TYPE", "application/x-www-form-urlencoded"},
                                            {"CONTENT_LENGTH", length}},
                                           body);
    EXPECT_EQ(output.status, 0) << length;
    EXPECT_TRUE(output.out.starts_with("Status: 400 Bad Request\r\n")) << length << ": " << output.out;
  }
  EXPECT_EQ(recordBytes(), before);
}

TEST_F(HttpPort, AChangeMovesTheServerForGood) {
  const int from = camera().port();
  const int byGet = freePort();
  EXPECT_EQ(camera().get(query(std::to_string(byGet))).body, portLine(byGet));
  expectMoved(from, byGet);

  const int byForm = freePort();
  EXPECT_EQ(camera().post("httpport.cgi", "httpport=" + std::to_string(byForm)).body, portLine(byForm));
  expectMoved(byGet, byForm);

  camera().reboot();
  EXPECT_EQ(camera().get(kName).body, portLine(byForm));
  camera().turnOff();
  EXPECT_EQ(fetch(byForm, kName).status, 0);
  camera().boot();
  EXPECT_EQ(camera().port(), byForm);
  EXPECT_EQ(camera().get(kName).body, portLine(byForm));
}

TEST_F(HttpPort, AnotherSitesPageIsRefused) {
  const std::string before = recordBytes();
  const std::string change = query(std::to_string(freePort()));
  for (const char* site : {"cross-site", "same-site"})
    EXPECT_EQ(camera().get(change, {std::string{"Sec-Fetch-Site: "} + site}).status, 403) << site;
  EXPECT_EQ(recordBytes(), before);
  for (const char* site : {"same-origin", "none"})
    EXPECT_EQ(camera().get(kName, {std::string{"Sec-Fetch-Site: "} + site}).status, 200) << site;
}

TEST_F(HttpPort, OnlyTheEndpointsAndTheCardAreServed) {
  writeFile(camera().state() / "sdcard" / "clip.cgi", "#!/bin/sh\necho; echo run\n");
  EXPECT_EQ(camera().get("/volumes/local/clip.cgi").body, "#!/bin/sh\necho; echo run\n");
  for (const char* path : {"/cgi-bin/nothing.cgi", "/cgi-bin/httpport", "/etc/camera/product.conf",
                           "/cgi-bin/..%2fetc/camera/product.conf"}) {
    EXPECT_EQ(camera().get(path).status, 404) << path;
  }
  for (const char* folder : {"/", "/cgi-bin/", "/volumes/local/"})
    EXPECT_EQ(camera().get(folder).status, 403) << folder;
}

// As root too, for whom the files of the kernel's settings are writable elsewhere.
TEST_F(HttpPort, NothingInTheCameraReachesTheHostsKernel) {
  const Output output =
      camera().inside({"bash", "-c",
                       "shopt -s globstar; for f in /proc/sys/{kernel,vm,net}/** /proc/sysrq-trigger; do"
                       "  [[ ! -f $f ]] || { (: >>\"$f\") 2>/dev/null && echo \"$f\"; }; done; echo done"});
  EXPECT_EQ(output.out, "done\n");
}

TEST_F(HttpPort, ABrokenRecordIsAnInternalFailureAndAMissingOneTheFactoryDefault) {
  const std::string good = recordBytes();
  std::string flipped = good;
  flipped.back() = static_cast<char>(flipped.back() ^ 1);
  for (const std::string& bytes : {good.substr(0, good.size() / 2), std::string{}, flipped}) {
    writeFile(camera().record("httpsvr"), bytes);
    for (const std::string& path : {std::string{kName}, query("8081")}) {
      const Reply reply = camera().get(path);
      EXPECT_EQ(reply.status, 500) << path << " with " << bytes.size() << " bytes";
      EXPECT_EQ(reply.body, "error=500\n") << path << " with " << bytes.size() << " bytes";
    }
    EXPECT_EQ(recordBytes(), bytes);
  }
  std::filesystem::remove(camera().record("httpsvr"));
  EXPECT_EQ(camera().get(kName).body, portLine(80));
  writeFile(camera().record("httpsvr"), good);
  EXPECT_EQ(camera().get(kName).status, 200);
}

TEST_F(HttpPort, AStormOfChangesEndsInOneOfThem) {
  constexpr int kRequests = 200;
  std::vector<int> ports(10);
  std::generate(ports.begin(), ports.end(), freePort);
  const int from = camera().port();
  std::vector<long> statuses(kRequests);
  std::vector<std::thread> clients;
  for (int i = 0; i < kRequests; ++i) {
    clients.emplace_back([&, i] {
      const int wanted = ports[static_cast<std::size_t>(i / 2) % ports.size()];
      const std::string path = i % 2 == 0 ? kName : query(std::to_string(wanted));
      statuses[static_cast<std::size_t>(i)] = fetch(from, path).status;
    });
  }
  for (std::thread& client : clients) client.join();

  EXPECT_TRUE(std::all_of(statuses.begin(), statuses.end(), [](long s) { return s == 200 || s == 400; }));
  EXPECT_GT(std::count(statuses.begin(), statuses.end(), 200), kRequests / 2);
  const std::string stored = camera().settings({"get", "httpsvr", "http_port"}).out;
  const int to = std::stoi(stored.substr(stored.find('=') + 1));
  EXPECT_NE(std::find(ports.begin(), ports.end(), to), ports.end()) << to;
  expectMoved(from, to);
  for (const auto& entry : std::filesystem::directory_iterator(camera().state() / "settings"))
    EXPECT_EQ(entry.path().filename(), "httpsvr");
}

TEST_F(HttpPort, OnlyTheExactNameStartsTheEndpoint) {
  struct Row {
    std::string argv0;
    std::string announced;
    bool known;
  };
  const std::string cut(250, 'x');
  const std::string tail(250, 'y');
  const Row rows[] = {{"/some/where/httpport.cgi", "httpport.cgi", true},
                      {"httpport.cgi", "httpport.cgi", true},
                      {"HTTPPORT.CGI", "HTTPPORT.CGI", false},
                      {"httpport", "httpport", false},
                      {"httpport.cgi.bak", "httpport.cgi.bak", false},
                      {"/" + cut + "/httpport.cgi", "htt", false},
                      {"/" + cut + tail, cut + "yyyy", false}};
  for (const Row& row : rows) {
    const Output output = camera().runOnce(row.argv0);
    EXPECT_EQ(output.status, 0) << row.argv0;
    EXPECT_EQ(output.err, "cgi_name " + row.announced + "\n") << row.argv0;
    EXPECT_EQ(output.out.starts_with("Status: 200 OK\r\n"), row.known) << row.argv0;
    EXPECT_EQ(output.out.empty(), !row.known) << row.argv0;
  }
}

// Every round starts a change and kills it after up to twice the time that one takes.
constexpr char kKillLoop[] = R"sh(
  change() { REQUEST_METHOD=GET QUERY_STRING=httpport=$1 exec /cgi-bin/httpport.cgi >/dev/null 2>&1; }
  mkfifo /tmp/never && exec 9<>/tmp/never
  begin=${EPOCHREALTIME/./} && (change 20000)
  span=$((${EPOCHREALTIME/./} - begin)) killed=0 old=http_port=20000
  for i in {1..150}; do
    change $((20000 + i)) &
    printf -v delay '0.%06d' $((RANDOM % (2 * span)))
    read -r -t "$delay" <&9
    kill -KILL $! 2>/dev/null
    wait $!
    (($? != 137)) || ((++killed))
    new=$(camera-settings get httpsvr http_port) || exit 1
    [[ $new == "$old" || $new == http_port=$((20000 + i)) ]] || exit 2
    old=$new
  done
  echo "$killed" && camera-settings set httpsvr http_port=20000 && ls /var/lib/camera/settings
)sh";

TEST_F(HttpPort, KilledAtAnyMomentItLeavesTheOldOrTheNewRecord) {
  const Output output = camera().inside({"bash", "-c", kKillLoop});
  ASSERT_EQ(output.status, 0) << output.err;
  const int killed = std::stoi(output.out);
  EXPECT_GT(killed, 0);
  EXPECT_LT(killed, 150) << "none was let finish";
  EXPECT_TRUE(output.out.ends_with("\nhttpsvr\n")) << output.out;
  ASSERT_EQ(camera().settings({"set", "httpsvr", "http_port=" + std::to_string(camera().port())}).status, 0);
}

}  // namespace
}  // namespace camera::test
