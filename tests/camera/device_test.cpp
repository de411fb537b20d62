// The whole camera: reboot, factory reset, and its return after a failure.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <ctime>
#include <map>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

constexpr double kRestartSeconds = 30;  // the endpoints wait five before they act

bool hasLine(const Reply& reply, const std::string& line) {
  return ("\n" + reply.body).find("\n" + line + "\n") != std::string::npos;
}

bool answers(int port) {
  return fetch(port, "/cgi-bin/info.cgi").status == 200;
}

struct Device : Camera {
  Device() { boot(); }
  // Repeats a request that came while the accounts were being changed.
  Reply call(const std::string& query) {
    Reply reply{};
    within(30, [&] { return (reply = get("/cgi-bin/" + query)).status != 503; });
    return reply;
  }
  // Gives it another port and a name server.
  int move() {
    const int to = freePort();
    call("network.cgi?dns1=9.9.9.9&httpport=" + std::to_string(to));
    EXPECT_TRUE(within(30, [&] { return port() == to; })) << log();
    return to;
  }
};

// The camera has booted and moved before, so this is the third start of its web server.
void expectRestart(Device& device, int port) {
  EXPECT_TRUE(within(kRestartSeconds, [&] { return device.starts() > 2; })) << device.log();
  EXPECT_TRUE(within(kRestartSeconds, [&] { return answers(port); })) << port;
}

// Changes the camera's name and location, then starts a factory reset.
void startReset(Device& device) {
  EXPECT_TRUE(hasLine(device.call("camera_info.cgi?name=mine&location=at+home"), "location=at home"));
  EXPECT_EQ(device.call("system_reset.cgi?reset=go").body, "reset=yes\n");
}

// Sets the camera's clock, then starts a reboot.
void startReboot(Device& device) {
  const Reply clock = device.call("datetime.cgi?method=2&date=2001-02-03&time=04:05:06");
  EXPECT_TRUE(hasLine(clock, "method=2") && hasLine(clock, "date=2001-02-03")) << clock.body;
  EXPECT_GT(std::time(nullptr), 1'000'000'000) << "the host's clock moved";
  EXPECT_EQ(device.call("system_reboot.cgi?reboot=go").body, "reboot=yes\n");
  EXPECT_TRUE(answers(device.port())) << "it goes only after five seconds";
}

// Three cameras at once, because each waits five seconds. The reset that fails starts first: it has failed
// when the others are back.
TEST(Device, ARebootKeepsSettingsAndAResetDoesNotAndAFailedResetRestartsNothing) {
  Device stuck;
  Device reset;
  Device rebooted;
  EXPECT_TRUE(hasLine(rebooted.call("info.cgi"), "ipaddr=127.0.0.1"));
  EXPECT_NE(rebooted.call("wlansurvey.cgi").body.find("encryption=AES"), std::string::npos);
  const int stuckAt = stuck.move();
  reset.move();
  const int port = rebooted.move();

  std::filesystem::create_directory(stuck.record("upnp"));  // a folder, which no reset replaces
  startReset(stuck);
  startReset(reset);
  startReboot(rebooted);
  expectRestart(rebooted, port);
  expectRestart(reset, reset.factoryPort);
  EXPECT_NE(rebooted.log().find("The camera restarts."), std::string::npos);
  EXPECT_NE(reset.log().find("The camera was reset and restarts."), std::string::npos);

  EXPECT_TRUE(hasLine(rebooted.call("network.cgi"), "dns1=9.9.9.9"));
  EXPECT_TRUE(hasLine(rebooted.call("datetime.cgi"), "date=2001-02-03"));
  EXPECT_EQ(reset.call("camera_info.cgi").body, "name=Camera\nlocation=\n");
  EXPECT_EQ(stuck.call("camera_info.cgi").body, "name=mine\nlocation=at home\n");
  EXPECT_TRUE(answers(stuckAt)) << "it restarted";
}

// It returns on the port used last if the stored one is taken, on the factory port if no port is known.
TEST(Device, ComesBackWhateverBecomesOfItsPortItsServerAndItsState) {
  Device device;
  const int worked = device.move();
  int taken = 0;
  const int listener = listenSomewhere(&taken);
  device.turnOff();
  device.inside({"camera-settings", "set", "httpsvr", "http_port=" + std::to_string(taken)});
  device.boot();
  EXPECT_EQ(device.port(), worked);
  EXPECT_TRUE(hasLine(device.call("httpport.cgi"), "httpport=" + std::to_string(taken)));
  close(listener);

  device.turnOff();
  writeFile(device.record("httpsvr"), "no record");
  std::filesystem::remove(device.state() / "run" / "camera" / "port");
  device.boot();
  EXPECT_EQ(device.port(), device.factoryPort);
  EXPECT_EQ(device.call("httpport.cgi").status, 500);

  for (const pid_t server : device.processes("/usr/sbin/lighttpd")) kill(server, SIGKILL);
  EXPECT_TRUE(within(30, [&] { return answers(device.factoryPort); }));
  EXPECT_NE(device.log().find("is started again"), std::string::npos);

  expectNoSanitizerReport(device.state());
  std::filesystem::remove_all(device.state());
  const std::string stored = "httpport=" + std::to_string(device.factoryPort);
  EXPECT_TRUE(within(30, [&] { return hasLine(device.call("httpport.cgi"), stored); }));
  EXPECT_TRUE(hasLine(device.call("camera_info.cgi?name=new"), "name=new"));
}

// What stands in its place may lead to the user's other files.
TEST(State, AFolderThatSomebodyElseMadeIsNotTaken) {
  TemporaryFolder mine;
  Camera camera;
  camera.boot();
  std::filesystem::create_directory(mine.path("tmp"));
  mine.put("tmp/file", "mine");
  std::filesystem::remove_all(camera.state());
  std::filesystem::create_directory(camera.state());
  for (const char* name : {"store", "daemons", "log", "run", "sdcard"})
    std::filesystem::create_symlink(mine.path(), camera.state() / name);
  EXPECT_TRUE(within(30, [&] { return camera.processes("").empty(); }));
  EXPECT_EQ(readFile(mine.path("tmp/file")), "mine");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(mine.path()), {}), 1);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(camera.state()), {}), 5);
}

// These show no settings: what happens now, where the head is, the card in the slot.
constexpr std::string_view kLive =
    "notify.cgi env_sound_lv.cgi event_log.cgi io.cgi ptz_pos.cgi ptz_move.cgi sdcard.cgi";

// The replies of all other endpoints, without the time of day.
std::map<std::string, std::string> settings(Device& device) {
  std::map<std::string, std::string> shown;
  const std::string table = readFile(CAMERA_SOURCE_DIR "/framework/endpoint_list.h");
  for (std::size_t end = 0; (end = table.find(".cgi\"", end)) != table.npos; ++end) {
    const std::size_t begin = table.rfind('"', end) + 1;
    const std::string cgi = table.substr(begin, end - begin) + ".cgi";
    if (kLive.find(cgi) != kLive.npos) continue;
    std::string& replies = shown[cgi] = device.call(cgi).body;
    if (replies.starts_with("error=400\nmessage=profileid"))
      replies += device.call(cgi + "?profileid=1").body + device.call(cgi + "?profileid=2").body;
    for (std::size_t at = 0; (at = replies.find("time=", at)) != replies.npos; ++at) {
      if (replies.find(':', at) == at + 7) replies.erase(at, sizeof "time=12:00:00");
    }
  }
  return shown;
}

TEST(Device, ShowsTheSameSettingsAfterARestore) {
  Device device;
  device.call("ptz_preset.cgi?act=add&name=gate");  // the head keeps it
  device.call("user_mod.cgi?name=ann&password=c2VjcmV0");
  std::istringstream changes(R"(
      camera_info.cgi?name=door&location=at+the+gate ddns.cgi?host=x.net mic.cgi?volume=70 speaker.cgi?volume=20
      datetime.cgi?method=2&date=2031-05-06&time=9:0:0&timezone=35&dstauto=no&offset=2:00 icr.cgi?mode=manual
      network.cgi?ip=192.168.0.60&dns1=9.9.9.9&upnp=on&rtspport=8554&httpexternalport=99 irled.cgi?mode=on
      pppoe.cgi?user=me&pass=%22%5Cn wireless.cgi?essid=%5Cx41+Net privacy.cgi?enable=yes motion.cgi?pir=yes
      rtspurl.cgi?profileid=2&urlentry=gate stream_auth.cgi?livevideo=off timestamp.cgi?label=%5C%0A%C3%A4%22
      detection_push.cgi?motion_enable=yes&motion_push=yes audio_detection.cgi?sensitivity=85
      action_ftp.cgi?host=x.net&pass=c2VjcmV0&interval=300 action_mail.cgi?sender=a@x.net&to=b@x.net&host=x.net
      sensor_output.cgi?current=WXGA-1280x800 sensor.cgi?brightness=55 video.cgi?profileid=1&codec=H264
      config_auto_patrol.cgi?presets=gate user_list.cgi)");
  std::string request;
  while (changes >> request) EXPECT_EQ(device.call(request).status, 200) << request;
  const auto before = settings(device);
  EXPECT_EQ(
      device.inside({"sh", "-c", "umask 0 && camera-settings backup /var/log/backup && factoryReset"}).status,
      0);
  EXPECT_EQ(std::filesystem::status(device.state() / "log/backup").permissions(),
            std::filesystem::perms(0600));
  EXPECT_EQ(device.inside({"camera-settings", "backup", "/var/log/backup"}).status, 2) << "it exists";
  const auto reset = settings(device);
  for (changes = std::istringstream(changes.str()); changes >> request;) {
    const std::string cgi = request.substr(0, request.find('?'));
    EXPECT_NE(reset.at(cgi), before.at(cgi)) << cgi;
  }
  const char* restore = "camera-settings set sd used=1 && camera-settings restore </var/log/backup";
  EXPECT_EQ(device.inside({"sh", "-c", restore}).status, 0);
  EXPECT_EQ(settings(device), before);
  EXPECT_TRUE(hasLine(device.call("user_mod.cgi?name=ann"), "password=c2VjcmV0"));
  EXPECT_TRUE(hasLine(device.call("sdcard.cgi"), "used=1"));
}

}  // namespace
}  // namespace camera::test
