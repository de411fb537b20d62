// ./run: what it starts, what it refuses, and what it leaves behind.
#include <fnmatch.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

class Run : public testing::Test {
 protected:
  static constexpr char kName[] = "/cgi-bin/httpport.cgi";

  Run() { std::filesystem::create_symlink(CAMERA_SOURCE_DIR "/run", folder_.path("run")); }
  ~Run() override { expectNoSanitizerReport(folder_.path("state")); }

  // Starts ./run through a link, as a user may have put one into a folder of PATH.
  pid_t startRun(const Command& options, const std::string& out = "out") {
    Command command{folder_.path("run"), "--state", folder_.path("state")};
    command.insert(command.end(), options.begin(), options.end());
    return start(command, "/dev/null", folder_.path(out), folder_.path("err"));
  }
  void expectRefusal(const Command& options, const std::string& complaint) {
    EXPECT_EQ(waitFor(startRun(options)), 1) << complaint;
    const std::string line = readFile(folder_.path("err"));
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    EXPECT_NE(line.find(complaint), std::string::npos) << complaint << ": " << line;
  }
  // Runs "settings" or "sim" with its arguments.
  std::string inside(const Command& program) {
    EXPECT_EQ(waitFor(startRun(program)), 0) << readFile(folder_.path("err"));
    return readFile(folder_.path("out"));
  }
  static bool answers(int port) { return fetch(port, kName).status == 200; }

  TemporaryFolder folder_;
};

TEST_F(Run, StartsOnceAndEndsWithEverythingItStarted) {
  const int port = freePort();
  const std::string url = "127.0.0.1:" + std::to_string(port) + kName;
  const pid_t run = startRun({"--port", std::to_string(port)}, "camera");
  ASSERT_TRUE(within(60, [&] { return answers(port); })) << readFile(folder_.path("err"));
  EXPECT_TRUE(within(30, [&] { return readFile(folder_.path("camera")).find(url) != std::string::npos; }));
  EXPECT_GT(processesOf(folder_).size(), 2);
  expectRefusal({"--port", std::to_string(freePort())}, "another camera");
  EXPECT_EQ(inside({"settings", "get", "httpsvr", "http_port"}), "http_port=" + std::to_string(port) + "\n");

  const std::string backup = inside({"settings", "backup"});
  EXPECT_EQ(backup.find("\nsystem."), std::string::npos) << "the firmware's own";
  umask(0);
  EXPECT_EQ(inside({"settings", "backup", folder_.path("backup")}), "");
  EXPECT_EQ(folder_.content("backup"), backup);
  EXPECT_EQ(std::filesystem::status(folder_.path("backup")).permissions(), std::filesystem::perms(0600));
  expectRefusal({"settings", "backup", folder_.path("backup")}, "backup exists or cannot be written");

  const auto hasInput = [&] { return inside({"sim", "status"}).find("input2=on") != std::string::npos; };
  EXPECT_EQ(inside({"sim", "input", "2", "on"}), "");
  EXPECT_TRUE(hasInput());
  expectRefusal({"sim", "input", "9", "on"}, "sim: usage: input NUMBER on|off; NUMBER 1 to 4");
  for (const char* kind : {"motion", "sound", "hot", "cold", "input", "plain"})
    inside({"sim", "log", kind, "door opened"});
  const std::string events = fetch(port, "/cgi-bin/event_log.cgi").body;
  EXPECT_EQ(fnmatch("di *2\nmd *: door opened\nsd *\nth *\ntc *\ndi *: door opened\n", events.c_str(), 0), 0);
  for (const pid_t daemons : processesOf(folder_, "camera-simulator")) kill(daemons, SIGKILL);
  EXPECT_TRUE(within(30, [&] { return waitFor(startRun({"sim", "status"})) == 0; })) << "it is started again";
  EXPECT_FALSE(hasInput());

  const int moved = freePort();
  inside({"settings", "set", "httpsvr", "http_port=" + std::to_string(moved)});
  EXPECT_TRUE(within(30, [&] { return answers(moved); }));
  kill(run, SIGINT);
  EXPECT_EQ(waitFor(run), 0);
  EXPECT_TRUE(processesOf(folder_).empty());
  expectRefusal({"sim", "status"}, "the camera is off (state: ");

  const pid_t again = startRun({}, "camera");
  EXPECT_TRUE(within(60, [&] { return answers(moved); })) << readFile(folder_.path("err"));
  kill(again, SIGKILL);
  waitFor(again);
  EXPECT_TRUE(within(30, [&] { return processesOf(folder_).empty(); }));
}

TEST_F(Run, OutlivesTheReaderOfItsOutput) {
  const int port = freePort();
  const pid_t run = start({"bash", "-c", "exec \"$0\" --state \"$1\" --port \"$2\" > >(head -n 1)",
                           folder_.path("run"), folder_.path("state"), std::to_string(port)},
                          "/dev/null", folder_.path("camera"), folder_.path("err"));
  ASSERT_TRUE(within(60, [&] { return answers(port); })) << readFile(folder_.path("err"));
  for (int i = 0; i < 2; ++i) {  // each move is announced
    const int moved = freePort();
    inside({"settings", "set", "httpsvr", "http_port=" + std::to_string(moved)});
    EXPECT_TRUE(within(30, [&] { return answers(moved); }));
  }
  kill(run, SIGINT);
  EXPECT_EQ(waitFor(run), 0);
  EXPECT_TRUE(processesOf(folder_).empty());
}

TEST_F(Run, RefusesInOneLineAndChangesNothing) {
  int taken = 0;
  const int listener = listenSomewhere(&taken);
  std::filesystem::create_directory(folder_.path("shared"));
  std::filesystem::permissions(folder_.path("shared"), std::filesystem::perms(0777));
  const std::string us = "taken by run_test (process " + std::to_string(getpid()) + ")";
  const std::pair<Command, std::string> rows[] = {
      {{"--port", std::to_string(taken)}, us},
      {{"--port", "554"}, "port 554 is the RTSP server's"},
      {{"--port", "443"}, "port 443 is the web server's second port"},
      {{"--port", "65536"}, "\"65536\" is not a port"},
      {{"--port"}, "--port needs a value"},
      {{"--port=0"}, "\"0\" is not a port"},
      {{"settings", "list", "--port=8123"}, "--port is for starting"},
      {{"sim", "--product", "full", "status"}, "--product is for starting"},
      {{"--state", folder_.path("run")}, "run is not a folder"},
      {{"--state", folder_.path("")},
       "is not empty and not a camera's state; choose an empty or a new folder"},
      {{"--state", "/proc/1/new"}, "/proc/1/new cannot be created in /proc/1 (No such file"},
      {{"settings", "list", "--state", folder_.path("run") + "/sub"}, "run is not a folder"},
      {{"--port", "8123", "settings", "list"}, "--port is for starting"},
      {{"sim", "status"}, "the camera is off"},
      {{"settings", "list", "--state", folder_.path("shared/state")}, "shared is not yours alone"},
      {{"--product", "toaster"}, "no product \"toaster\"; there are: basic corner full"},
      {{"--colour", "red"}, "unknown option --colour"}};
  for (const auto& [options, complaint] : rows) expectRefusal(options, complaint);
  close(listener);
  for (const char* made : {"state", "settings"}) EXPECT_FALSE(std::filesystem::exists(folder_.path(made)));

  EXPECT_EQ(inside({"--product=basic", "settings", "get", "system", "model"}), "model=IPCAM-Basic\n");
  expectRefusal({"--product", "full"}, "is of the product \"basic\", not \"full\"");
  const std::string serial = readFile(folder_.path("state/serial"));
  std::string address = "mac_address = 02:00:5E";
  for (const std::size_t at : {3U, 5U, 7U}) address += ":" + serial.substr(at, 2);
  EXPECT_NE(readFile(folder_.path("state/product.conf")).find(address + "\n"), std::string::npos);
  // As version 0.9.0 left it: the product is known by its hardware address alone.
  std::filesystem::remove(folder_.path("state/product"));
  writeFile(folder_.path("state/product.conf"),
            readFile(CAMERA_SOURCE_DIR "/virtual-camera/products/corner/product.conf"));
  expectRefusal({"--product", "full"}, "is of the product \"corner\"");

  std::filesystem::rename(folder_.path("state/log"), folder_.path("log"));
  writeFile(folder_.path("state/log"), "");
  expectRefusal({"settings", "list"}, "state/log is not a folder; delete it");

  if (chown((folder_.path("state/store/settings")).c_str(), 65534, 65534) == 0)  // which only root can do
    expectRefusal({},
                  "state/store/settings belongs to nobody, and only that user can use this folder; choose "
                  "another (--state "
                  "DIR), or make this one yours: sudo chown -R ");
}

// The first start found no space for some of the files and settings.
TEST_F(Run, CompletesWhatAnEarlierStartCouldNot) {
  inside({"settings", "list"});
  const std::string folder = folder_.path("state/sdcard/IPCAM/");
  std::filesystem::create_directories(folder);
  writeFile(folder_.path("state/daemons/card-filling"), "");
  std::filesystem::remove_all(folder_.path("state/store/settings"));
  for (const char* name : {"product", "product.conf", "factory-settings"})
    std::filesystem::remove(folder_.path("state/") + name);
  writeFile(folder_.path("state/serial"), "");
  for (const bool isComplete : {false, true}) {
    const int port = freePort();
    const pid_t run = startRun({"--port=" + std::to_string(port)}, "camera");
    EXPECT_TRUE(within(60, [&] { return answers(port); })) << readFile(folder_.path("err"));
    const std::filesystem::directory_iterator days(folder);
    EXPECT_EQ(std::distance(begin(days), end(days)), isComplete ? 0 : 14);
    EXPECT_EQ(inside({"settings", "get", "sd", "total"}), "total=15558144\n");
    kill(run, SIGINT);
    EXPECT_EQ(waitFor(run), 0);
    EXPECT_TRUE(readFile(folder_.path("camera")).ends_with("\nThe camera is off.\n"));
    for (const auto& day : std::filesystem::directory_iterator(folder)) std::filesystem::remove_all(day);
  }
}

}  // namespace
}  // namespace camera::test
