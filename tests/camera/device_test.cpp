// The whole camera: what only its reboot, its factory reset and the host's kernel can show.
#include <gtest/gtest.h>

#include <ctime>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

constexpr double kRestartSeconds = 12;  // the endpoints wait five before they act

std::string cgi(const std::string& call) {
  return "/cgi-bin/" + call;
}

bool hasLine(const Reply& reply, const std::string& line) {
  return ("\n" + reply.body).find("\n" + line + "\n") != std::string::npos;
}

// Factory settings of its own, so that the camera comes back on a port that is free.
class Device : public testing::Test {
 protected:
  void SetUp() override {
    factoryPort_ = freePort();
    writeFile(camera_.state() / "factory-settings",
              "httpsvr http_port=" + std::to_string(factoryPort_) + "\n");
    std::string product = readFile(CAMERA_SOURCE_DIR "/virtual-camera/products/full/product.conf");
    writeFile(camera_.state() / "product.conf", product + "interface.eth0 = lo\n");
    camera_.boot();
  }

  bool goesAndComesBack(int from, int to) {
    return within(kRestartSeconds, [&] { return fetch(from, cgi("info.cgi")).status == 0; }) &&
           within(kRestartSeconds, [&] { return fetch(to, cgi("info.cgi")).status == 200; });
  }

  Camera camera_;
  int factoryPort_ = 0;
};

TEST_F(Device, ARebootKeepsSettingsAndClock) {
  const Reply info = camera_.get(cgi("info.cgi"));
  EXPECT_TRUE(hasLine(info, "ipaddr=127.0.0.1")) << info.body;
  EXPECT_TRUE(hasLine(info, "netmask=255.0.0.0")) << info.body;
  EXPECT_NE(camera_.get(cgi("wlansurvey.cgi")).body.find("encryption=AES"), std::string::npos);

  const int from = camera_.port();
  const int to = freePort();
  EXPECT_TRUE(
      hasLine(camera_.get(cgi("network.cgi?dns1=9.9.9.9&httpport=" + std::to_string(to))), "dns1=9.9.9.9"));
  ASSERT_TRUE(within(2, [&] { return fetch(to, cgi("info.cgi")).status == 200; }));
  EXPECT_TRUE(within(0.5, [&] { return fetch(from, cgi("info.cgi")).status == 0; }));

  const std::time_t before = std::time(nullptr);
  const Reply clock = camera_.get(cgi("datetime.cgi?method=2&date=2001-02-03&time=04:05:06"));
  EXPECT_TRUE(hasLine(clock, "method=2") && hasLine(clock, "date=2001-02-03")) << clock.body;
  EXPECT_LT(std::time(nullptr) - before, 60) << "the host's clock moved";

  EXPECT_EQ(camera_.get(cgi("system_reboot.cgi?reboot=now")).status, 400);
  EXPECT_EQ(camera_.get(cgi("system_reboot.cgi?reboot=go")).body, "reboot=yes\n");
  EXPECT_EQ(camera_.get(cgi("info.cgi")).status, 200) << "it goes only after five seconds";
  ASSERT_TRUE(goesAndComesBack(to, to));
  EXPECT_TRUE(hasLine(camera_.get(cgi("network.cgi")), "dns1=9.9.9.9"));
  EXPECT_TRUE(hasLine(camera_.get(cgi("datetime.cgi")), "date=2001-02-03"));
}

TEST_F(Device, AResetRestoresTheFactoryAndAFailedOneRestartsNothing) {
  EXPECT_TRUE(hasLine(camera_.get(cgi("camera_info.cgi?name=mine&location=at+home")), "location=at home"));
  const int port = camera_.port();
  const std::filesystem::path obstacle = camera_.record("lan");  // a folder, which no reset removes
  std::filesystem::create_directory(obstacle);
  EXPECT_EQ(camera_.get(cgi("system_reset.cgi?reset=go")).body, "reset=yes\n");
  EXPECT_FALSE(within(7, [&] { return fetch(port, cgi("camera_info.cgi")).status == 0; }));

  std::filesystem::remove(obstacle);
  camera_.get(cgi("camera_info.cgi?name=mine"));
  EXPECT_EQ(camera_.get(cgi("system_reset.cgi?reset=go")).body, "reset=yes\n");
  ASSERT_TRUE(goesAndComesBack(port, factoryPort_));
  const Reply names = fetch(factoryPort_, cgi("camera_info.cgi"));
  EXPECT_EQ(names.body, "name=Camera\nlocation=\n");
}

}  // namespace
}  // namespace camera::test
