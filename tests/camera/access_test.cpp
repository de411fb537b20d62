// The whole camera: who gets in, and what of the card gets out.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

// A camera whose port is reached from this machine alone ("0100007F") or from everywhere ("00000000").
std::string listensOn(int port) {
  std::ostringstream local;
  local << ":" << std::uppercase << std::hex << port << " 00000000:0000 0A";
  const std::string table = readFile("/proc/net/tcp");
  const std::size_t at = table.find(local.str());
  return at == table.npos ? "" : table.substr(at - 8, 8);
}

struct Guarded : Camera {
  Guarded() { boot(); }
  // What a client is answered that logs in as NAME:PASSWORD, or not where that is empty.
  std::string status(const std::string& account, const std::string& path) {
    Command curl{"curl", "-s", "-o", "/dev/null", "-w", "%{http_code}", "--path-as-is", "--digest"};
    if (!account.empty()) curl.insert(curl.end(), {"-u", account});
    curl.push_back("http://127.0.0.1:" + std::to_string(port()) + path);
    return run(curl).out;
  }
};

constexpr char kAdmin[] = R"(admin:a:b#"\'=c)";
constexpr char kRoot[] = R"(root:a:b#"\'=c)";
constexpr char kBob[] = "b.o_b-1:=:=";

// From one request to the next, in this order.
TEST(Access, AnAccountGetsInAsLongAsItIsStoredAndWhereItsPrivilegesReach) {
  Guarded camera;
  EXPECT_EQ(camera.status("", "/cgi-bin/network.cgi"), "200");
  EXPECT_EQ(listensOn(camera.port()), "0100007F");
  const struct {
    const char* account;
    const char* path;
    const char* status;
  } rows[] = {
      {"", "/cgi-bin/user_mod.cgi?name=admin&password=YTpiIyJcJz1j", "200"},
      {"", "/cgi-bin/info.cgi", "401"},
      {"", "/", "401"},
      {"admin:", "/cgi-bin/info.cgi", "401"},
      {kAdmin, "/cgi-bin/network.cgi", "200"},
      {kAdmin, "/volumes/local/none", "404"},
      {kBob, "/cgi-bin/info.cgi", "401"},
      {kAdmin, "/cgi-bin/user_mod.cgi?name=b.o_b-1&password=PTo9", "200"},
      {kBob, "/cgi-bin/info.cgi", "200"},
      {kBob, "/cgi-bin/speaker.cgi", "200"},
      {kBob, "/cgi-bin/network.cgi", "401"},
      {kBob, "/cgi-bin/info.cgi/../network.cgi", "401"},
      {kBob, "/cgi-bin/network.cgi/info.cgi", "401"},
      {kBob, "/volumes/local/none", "401"},
      {kAdmin, "/cgi-bin/user_mod.cgi?name=eve", "200"},
      {"eve:", "/cgi-bin/info.cgi", "401"},
      {kAdmin, "/cgi-bin/user_mod.cgi?name=b.o_b-1&password=bmV3", "200"},
      {kBob, "/cgi-bin/info.cgi", "401"},
      {"b.o_b-1:new", "/cgi-bin/info.cgi", "200"},
      {kAdmin, "/cgi-bin/user_del.cgi?name=b.o_b-1", "200"},
      {"b.o_b-1:new", "/cgi-bin/info.cgi", "401"},
      {kAdmin, "/cgi-bin/user_mod.cgi?name=admin&newname=root", "200"},
      {kAdmin, "/cgi-bin/info.cgi", "401"},
      {kRoot, "/cgi-bin/info.cgi", "200"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(camera.status(row.account, row.path), row.status) << row.account << " " << row.path;
  EXPECT_EQ(listensOn(camera.port()), "00000000");

  writeFile(camera.record("account"), "no record");
  EXPECT_TRUE(within(5, [&] { return camera.status(kRoot, "/cgi-bin/info.cgi") == "401"; }));
  camera.inside({"camera-settings", "reset", "account"});
  EXPECT_TRUE(within(5, [&] { return camera.status("", "/cgi-bin/network.cgi") == "200"; }));
  EXPECT_EQ(listensOn(camera.port()), "0100007F");
}

// A name that is added to the table without a line in the list is caught here, not by a stranger.
TEST(Access, TheListNamesEveryEndpointOnce) {
  std::map<std::string, int> listed;
  std::istringstream lines(readFile(CAMERA_SOURCE_DIR "/virtual-camera/access"));
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("#")) ++listed[line.substr(0, line.find(' '))];
  }
  const std::string table = readFile(CAMERA_SOURCE_DIR "/framework/cgi_table.cpp");
  int endpoints = 0;
  for (std::size_t at = 0; (at = table.find("    {\"", at)) != table.npos; ++endpoints) {
    at += 6;
    EXPECT_EQ(listed[table.substr(at, table.find('"', at) - at)], 1) << table.substr(at, 30);
  }
  EXPECT_GT(endpoints, 20);
}

TEST(Access, TheCardGivesItsFilesAndNothingElseAndIsEmptiedByAFormat) {
  Camera camera;
  camera.boot();
  const std::filesystem::path card = camera.state() / "sdcard";
  const std::filesystem::path folder = card / "IPCAM";
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    if (entry.path().extension() == ".avi") files.push_back(entry.path());
  ASSERT_GT(files.size(), 100);
  const Reply reply = camera.get("/volumes/local/" + files[0].lexically_relative(folder).string());
  EXPECT_NE(reply.head.find("\r\nContent-Type: video/x-msvideo\r\n"), std::string::npos);
  EXPECT_TRUE(reply.body == readFile(files[0]) && reply.body.size() > 1'000'000);

  writeFile(card / "outside", "outside");
  std::filesystem::create_symlink("../outside", folder / "link");
  std::filesystem::create_directory_symlink("/run/camera", folder / "camera");
  for (const char* path :
       {"..%2foutside", "%2e%2e/outside", "x/../../outside", "outside", "/mnt/usb/outside"})
    EXPECT_EQ(camera.get(std::string{"/volumes/local/"} + path).status, 404) << path;
  for (const char* path : {"", "link", "camera/accounts/mode"})
    EXPECT_EQ(camera.get(std::string{"/volumes/local/"} + path).status, 403) << path;

  const Output format =
      camera.inside({"sh", "-c", "sdmanage.sh format & sleep 0.5; camera-settings get sd state; wait $!"});
  EXPECT_EQ(format.status, 0) << format.err;
  EXPECT_EQ(format.out, "state=9\n");
  EXPECT_TRUE(std::filesystem::is_empty(card));
  EXPECT_TRUE(std::filesystem::exists(camera.state() / "run" / "camera" / "accounts"));
  const std::string record = camera.inside({"camera-settings", "get", "sd"}).out;
  EXPECT_NE(record.find("state=2\n"), record.npos);
  EXPECT_NE(record.find("free=15558144\nused=0\n"), record.npos) << record;
}

}  // namespace
}  // namespace camera::test
