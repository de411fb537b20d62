// The channels of a request as real pipes and processes, inside the sandbox: what becomes of it if the other
// end fails. Action programs that hang, print, and write settings themselves stand in for the camera's own.
#include "tests/camera/camera.h"

namespace camera::test {
namespace {

namespace fs = std::filesystem;

struct Row {
  const char* what;
  const char* script;
  const char* out;
};

constexpr char kGet[] =
    "get() { QUERY_STRING=$2 REQUEST_METHOD=GET timeout 20 /cgi-bin/$1.cgi 2>/dev/null | sed '1,/^.$/d'; }\n";

const Row kRows[] = {
    {"an action prints and hangs; the change is stored", "get camera_info 'name=a'", "name=a\nlocation=\n"},
    {"an action writes settings",
     "get video 'profileid=1&framerate=10' | grep framerate; camera-settings get ntp timeserver",
     "framerate=10\ntimeserver=by.action\n"},
    {"a client hangs up, and nobody reads the log",
     "(sleep 0.5; QUERY_STRING='enable=no' REQUEST_METHOD=GET exec /cgi-bin/mic.cgi) 2>&1 | true; "
     "sleep 2; get mic | head -n 1",
     "enable=no\n"},
    {"the log's socket is full",
     "busybox syslogd -n -O /tmp/log & sleep 0.5; kill -STOP $!; "
     "for i in 1 2 3 4 5 6 7 8 9 10 11 12; do get mic | head -n 1; done | uniq -c | tr -s ' '; kill -KILL $!",
     " 12 enable=no\n"},
    {"a pipe is among the card's files",
     "camera-settings set sd state=2; d=/mnt/usb/$(camera-settings get system model | cut -d = -f 2); mkdir "
     "-p $d; mkfifo $d/pipe; "
     "get sdcard_list | tail -n 1; get sdcard_download file=pipe",
     "items=\npath=\nfile=pipe\nresult=2\n"},
};

TEST(Channels, OfARequestMayFail) {
  Camera camera;
  const TemporaryFolder own;
  const fs::path source = CAMERA_SOURCE_DIR;
  fs::copy(source / "virtual-camera", own.path("virtual-camera"), fs::copy_options::recursive);
  for (const char* part : {"console", "framework"})
    fs::create_directory_symlink(source / part, own.path(part));
  const auto program = [&](const std::string& name, const std::string& script) {
    own.put("virtual-camera/" + name, "#!/bin/sh\n" + script + "\n");
    fs::permissions(own.path("virtual-camera/" + name), fs::perms(0755));
  };
  program("actions/host", "echo into the reply; exec sleep 60");
  program("actions/profile", "exec /usr/lib/camera/bin/camera-settings set ntp timeserver=by.action");
  for (const Row& row : kRows) {
    const Output output = camera.run({own.path("virtual-camera/sandbox"), "--state", camera.state(),
                                      "/bin/sh", "-c", std::string{kGet} + row.script});
    EXPECT_EQ(output.out, row.out) << row.what << ": " << output.err;
  }
}

}  // namespace
}  // namespace camera::test
