// info.cgi, camera_info.cgi and dgtalkie_info.cgi: what the camera says of itself.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kInfo{
    .cgi = "info.cgi",
    .state =
        "system.version=2.1 system.model=M system.brand=B system.product=P system.build=7 host.name=cam "
        "host.location=hall product= product.mac_address=00:11:22:33:44:55",
    .reply =
        "model=M&product=P&brand=B&version=2.1&build=7&brixa=1.9.5&name=cam&location=hall&"
        "macaddr=00:11:22:33:44:55&ipaddr=192.168.0.20&netmask=255.255.240.0&gateway=192.168.0.1&wireless=no&"
        "inputs=0&outputs=0&speaker=no&videoout=no&pir=no&icr=no&ir=no&mic=no"};

TEST(Info, ListsTheFeaturesOfTheProduct) {
  kInfo.accepts(
      {{"",
        "product.wireless=1 product.has_pan_tilt=1 product.has_zoom=2 product.input_count=2 "
        "product.output_count=1 "
        "product.has_speaker=2 product.sensor=vx1128p product.has_pir=256 product.has_icr=2 "
        "product.has_irled=2 "
        "product.has_mic=2",
        "wireless=yes&ptz=P,T,Z&inputs=2&outputs=1&speaker=yes&videoout=yes&pir=yes&icr=yes&ir=yes&mic=yes"},
       {"", "product.has_pan_tilt=1 product.sensor=vx112", "wireless=no&ptz=P,T"},
       {"", "product.has_pan_tilt=2 product.has_zoom=1 product.sensor=xvx1128", ""},
       {"", "product.input_count=255 product.output_count=258", "inputs=255&outputs=2"}});
}

TEST(Info, ReportsTheInterfaceThatLeadsOutside) {
  kInfo.accepts({{"", "ppp0=10.0.0.1 ra0=10.0.0.3", "ipaddr=10.0.0.1"},
                 {"", "ra0=10.0.0.3", ""},
                 {"", "eth0= ra0=10.0.0.3", "ipaddr=10.0.0.3"}});
  kInfo.refuses("!", "eth0=", 500);
  kInfo.refuses("a=1", "eth0=");
}

TEST(CameraInfo, TakesANameWithoutASpaceAndALocationWithSome) {
  const Endpoint cameraInfo{.cgi = "camera_info.cgi",
                            .state = "host.name=cam host.location=hall",
                            .reply = "name=cam&location=hall",
                            .writes = "set host 0"};
  const std::string name = "a-B_9." + std::string(30, 'n');
  const std::string place(60, '~');
  cameraInfo.accepts({{"name=cam&location=hall"},
                      {"location=+a%26b+%22c%22", "", "location= a&b \"c\""},
                      {"location=&name=" + name},
                      {"location=" + place}});
  cameraInfo.refuses("name= name=a+b name=new&!other=1 name=n" + name + " location=~" + place);
}

TEST(DgtalkieInfo, TakesNoParameter) {
  const Endpoint dgtalkie{.cgi = "dgtalkie_info.cgi",
                          .reply = "dgtalkie=yes&supports=0x01,0x02,0x03,0x04,0x05,0x06"};
  dgtalkie.accepts({});
  dgtalkie.refuses("dgtalkie=yes");
}

}  // namespace
}  // namespace camera::test
