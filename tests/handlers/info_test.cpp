// info.cgi, camera_info.cgi and dgtalkie_info.cgi: what the camera says of itself.
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

IF_INFO at(const char* address) {
  IF_INFO info{};
  inet_pton(AF_INET, address, &info.address);
  inet_pton(AF_INET, "255.255.240.0", &info.netmask);
  inet_pton(AF_INET, "192.168.0.1", &info.gateway);
  return info;
}

void startWired(const char* product) {
  scripted().reset();
  scripted().store(
      "system.version=2.1 system.model=M system.brand=B system.product=P system.build=7 host.name=cam "
      "host.location=hall");
  scripted().productInfo = product;
  scripted().interfaces["eth0"] = at("192.168.0.20");
}

constexpr char kIdentity[] =
    "model=M product=P brand=B version=2.1 build=7 brixa=1.9.5 name=cam location=hall "
    "macaddr=00:11:22:33:44:55 ipaddr=192.168.0.20 netmask=255.255.240.0 gateway=192.168.0.1 ";

TEST(Info, ListsTheFeaturesOfTheProduct) {
  const std::pair<const char*, const char*> rows[] = {
      {"", "wireless=no inputs=0 outputs=0 speaker=no videoout=no pir=no icr=no ir=no mic=no "},
      {"wireless=1\nhas_pan_tilt=1\nhas_zoom=2\ninput_count=2\noutput_count=1\nhas_speaker=2\n"
       "sensor=vx1128p\nhas_pir=256\nhas_icr=2\nhas_irled=2\nhas_mic=2\n",
       "wireless=yes ptz=P,T,Z inputs=2 outputs=1 speaker=yes videoout=yes pir=yes icr=yes ir=yes mic=yes "},
      {"has_pan_tilt=1\nhas_mic=1\nhas_icr=1\nsensor=vx112\n",
       "wireless=no ptz=P,T inputs=0 outputs=0 speaker=no videoout=no pir=no icr=yes ir=no mic=yes "},
      {"has_pan_tilt=2\nhas_zoom=1\ninput_count=255\noutput_count=258\nhas_irled=1\nsensor=xvx1128\n",
       "wireless=no inputs=255 outputs=2 speaker=no videoout=no pir=no icr=no ir=yes mic=no "}};
  for (const auto& [product, features] : rows) {
    startWired(product);
    scripted().productInfo += "mac_address=00:11:22:33:44:55\n";
    EXPECT_EQ(request("info.cgi", "").body, std::string{kIdentity} + features) << product;
    EXPECT_EQ(scripted().allCalls(), "get system get host get gpio");
  }
}

TEST(Info, ReportsTheInterfaceThatLeadsOutside) {
  startWired("");
  scripted().interfaces = {
      {"lo", at("10.0.0.9")}, {"ppp0", at("10.0.0.1")}, {"eth0", at("10.0.0.2")}, {"ra0", at("10.0.0.3")}};
  for (const auto& [name, line] :
       {std::pair{"ppp0", "ipaddr=10.0.0.1 "}, {"eth0", "ipaddr=10.0.0.2 "}, {"ra0", "ipaddr=10.0.0.3 "}}) {
    EXPECT_NE(request("info.cgi", "").body.find(line), std::string::npos) << line;
    scripted().interfaces.erase(name);
  }
  EXPECT_EQ(request("info.cgi", "").body, "error=500 ");
}

TEST(Info, FailsWhereAReadDoes) {
  expectResults("info.cgi", "", {{"", 0, "a=1", 400, ""}});
  for (const std::string failing : {"get system", "get host", "get gpio", "product"}) {
    startWired("");
    scripted().results[failing] = 2;
    scripted().productFails = failing == "product";
    EXPECT_EQ(request("info.cgi", "").status, 500) << failing;
  }
}

constexpr char kHost[] = "host.name=cam host.location=hall";
constexpr char kWritten[] = "clean set host 0 work host";

TEST(CameraInfo, TakesANameWithoutASpaceAndALocationWithSome) {
  const std::string name = "a-B_9." + std::string(30, 'n');
  const std::string place(60, '~');
  expectRows("camera_info.cgi", kHost,
             {{"", "", 200, "name=cam location=hall ", ""},
              {"name=cam&location=hall", "", 200, "name=cam location=hall ", ""},
              {"location=+a%26b+%22c%22", "", 200, "name=cam location= a&b \"c\" ", kWritten},
              {"location=&name=" + name, "", 200, "name=" + name + " location= ", kWritten},
              {"location=" + place, "", 200, "name=cam location=" + place + " ", kWritten}});
  expectRefused("camera_info.cgi", kHost,
                {"name=" + name + "n", "location=~" + place, "name=", "name=a+b", "name=new&other=1"});
  expectResults("camera_info.cgi", kHost,
                {{"get host", 2, "name=new", 500, "get host"},
                 {"set host 0", 1, "name=new", 400, "get host clean set host 0"}});
}

TEST(DgtalkieInfo, TakesNoParameter) {
  expectRows("dgtalkie_info.cgi", "",
             {{"", "", 200, "dgtalkie=yes supports=0x01,0x02,0x03,0x04,0x05,0x06 ", ""},
              {"dgtalkie=yes", "", 400, "", ""}});
}

}  // namespace
}  // namespace camera::test
