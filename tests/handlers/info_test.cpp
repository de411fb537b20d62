// info.cgi, camera_info.cgi and dgtalkie_info.cgi: what the camera says of itself.
#include <arpa/inet.h>
#include <gtest/gtest.h>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

IF_INFO at(const char* address, const char* gateway) {
  IF_INFO info{};
  inet_pton(AF_INET, address, &info.address);
  inet_pton(AF_INET, "255.255.240.0", &info.netmask);
  inet_pton(AF_INET, gateway, &info.gateway);
  return info;
}

void startWired(const char* product) {
  scripted().reset();
  scripted().store(
      "system.version=2.1 system.model=M system.brand=B system.product=P system.build=7 host.name=cam "
      "host.location=hall");
  scripted().productInfo = product;
  scripted().interfaces["eth0"] = at("192.168.0.20", "192.168.0.1");
}

constexpr char kReads[] = "get system get host get gpio";
constexpr char kNames[] = "model=M product=P brand=B version=2.1 build=7 brixa=1.9.5 name=cam location=hall ";
constexpr char kAddresses[] = "ipaddr=192.168.0.20 netmask=255.255.240.0 gateway=192.168.0.1 ";

TEST(Info, ListsTheFeaturesOfTheProduct) {
  struct ProductRow {
    const char* product;
    const char* mac;
    const char* features;
  } const rows[] = {
      {"", "", "wireless=no inputs=0 outputs=0 speaker=no videoout=no pir=no icr=no ir=no mic=no "},
      {"mac_address=00:11:22:33:44:55\nwireless=1\nhas_pan_tilt=1\nhas_zoom=2\ninput_count=2\n"
       "output_count=1\nhas_speaker=2\nsensor=vx1128p\nhas_pir=256\nhas_icr=2\nhas_irled=2\nhas_mic=2\n",
       "00:11:22:33:44:55",
       "wireless=yes ptz=P,T,Z inputs=2 outputs=1 speaker=yes videoout=yes pir=yes icr=yes ir=yes mic=yes "},
      {"has_pan_tilt=1\nhas_mic=1\nhas_icr=1\nsensor=vx112\n", "",
       "wireless=no ptz=P,T inputs=0 outputs=0 speaker=no videoout=no pir=no icr=yes ir=no mic=yes "},
      {"has_pan_tilt=2\nhas_zoom=1\ninput_count=255\noutput_count=258\nhas_irled=1\nsensor=xvx1128\n", "",
       "wireless=no inputs=255 outputs=2 speaker=no videoout=no pir=no icr=no ir=yes mic=no "},
  };
  for (const ProductRow& row : rows) {
    SCOPED_TRACE(row.product);
    startWired(row.product);
    const Reply reply = request("info.cgi", "");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, std::string{kNames} + "macaddr=" + row.mac + " " + kAddresses + row.features);
    EXPECT_EQ(scripted().allCalls(), kReads);
  }
}

TEST(Info, ReportsTheInterfaceThatLeadsOutside) {
  const std::pair<std::vector<const char*>, const char*> rows[] = {
      {{"ppp0", "eth0", "ra0"}, "ipaddr=10.0.0.0 "},
      {{"ra0", "eth0"}, "ipaddr=10.0.0.1 "},
      {{"lo", "ra0"}, "ipaddr=10.0.0.1 "},
      {{"lo"}, "error=500 "},
  };
  for (const auto& [active, expected] : rows) {
    startWired("");
    scripted().interfaces.clear();
    std::string address = "10.0.0.0";
    for (const char* name : active) {
      scripted().interfaces[name] = at(address.c_str(), "0.0.0.0");
      ++address.back();
    }
    EXPECT_NE(request("info.cgi", "").body.find(expected), std::string::npos) << expected << active.front();
  }
}

TEST(Info, FailsWhereAReadDoes) {
  const ResultRow rows[] = {
      {"get system", 2, "a=1", 400, ""},
      {"get system", 2, "", 500, "get system"},
      {"get host", 1, "", 500, "get system get host"},
      {"get gpio", 2, "", 500, kReads},
      {"product", 2, "", 500, kReads},
  };
  for (const ResultRow& row : rows) {
    SCOPED_TRACE(std::string{"info.cgi?"} + row.query + "  failing: " + row.call);
    startWired("");
    scripted().results[row.call] = row.result;
    scripted().productFails = std::string{"product"} == row.call;
    EXPECT_EQ(request("info.cgi", row.query).status, row.status);
    EXPECT_EQ(scripted().allCalls(), row.calls);
  }
}

constexpr char kHost[] = "host.name=cam host.location=hall";
constexpr char kWritten[] = "clean set host 0 work host";

TEST(CameraInfo, TakesANameWithoutASpaceAndALocationWithSome) {
  const std::string longName(36, 'n');
  const std::string longPlace(60, '~');
  const std::string longest = "name=" + longName + "&location=" + longPlace;
  const std::string longestReply = "name=" + longName + " location=" + longPlace + " ";
  const std::string tooLong = "name=n" + longName;
  const std::string tooLongPlace = "location=~" + longPlace;
  expectRows("camera_info.cgi", kHost,
             {
                 {"", "", 200, "name=cam location=hall ", ""},
                 {"name=cam&location=hall", "", 200, "name=cam location=hall ", ""},
                 {"name=a-B_9.", "", 200, "name=a-B_9. location=hall ", kWritten},
                 {"location=+a%26b+%22c%22", "", 200, "name=cam location= a&b \"c\" ", kWritten},
                 {"location=", "", 200, "name=cam location= ", kWritten},
                 {longest.c_str(), "", 200, longestReply.c_str(), kWritten},
                 {tooLong.c_str(), "", 400, "", ""},
                 {tooLongPlace.c_str(), "", 400, "", ""},
                 {"name=", "", 400, "", ""},
                 {"name=a+b", "", 400, "", ""},
                 {"name=a%2Cb", "", 400, "", ""},
                 {"location=%C3%A9", "", 400, "", ""},
                 {"location=a%00b", "", 400, "", ""},
                 {"name=new&other=1", "", 400, "", ""},
             });
}

TEST(CameraInfo, AnswersAsTheStoreDoes) {
  expectResults("camera_info.cgi", kHost,
                {
                    {"get host", 2, "name=new", 500, "get host"},
                    {"set host 0", 1, "name=new", 400, "get host clean set host 0"},
                    {"set host 0", 2, "name=new", 500, "get host clean set host 0"},
                });
}

TEST(DgtalkieInfo, TakesNoParameter) {
  expectRows("dgtalkie_info.cgi", "",
             {
                 {"", "", 200, "dgtalkie=yes supports=0x01,0x02,0x03,0x04,0x05,0x06 ", ""},
                 {"dgtalkie=yes", "", 400, "", ""},
             });
}

}  // namespace
}  // namespace camera::test
