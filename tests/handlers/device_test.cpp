// What the camera is and does as a device: info.cgi, camera_info.cgi, dgtalkie_info.cgi, httpport.cgi,
// wlansurvey.cgi, wlansignal.cgi, system_reboot.cgi and system_reset.cgi.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kInfo{"info.cgi",
                     "system.version=2.1 system.model=M system.brand=B system.product=P system.build=7 "
                     "host.name=cam host.location=hall product= product.mac_address=00:11:22:33:44:55",
                     "model=M&product=P&brand=B&version=2.1&build=7&brixa=1.9.5&name=cam&location=hall&"
                     "macaddr=00:11:22:33:44:55&ipaddr=192.168.0.20&netmask=255.255.240.0&gateway=192.168.0."
                     "1&wireless=no&inputs=0&outputs=0&speaker=no&videoout=no&pir=no&icr=no&ir=no&mic=no"};

TEST(Info, ListsTheFeaturesOfTheProduct) {
  kInfo.accepts(
      {{"",
        "product.wireless=1 product.has_pan_tilt=1 product.has_zoom=2 product.input_count=2 "
        "product.output_count=1 product.has_speaker=2 product.sensor=vx1128p product.has_pir=256 "
        "product.has_icr=2 product.has_irled=2 product.has_mic=2",
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
  const Endpoint cameraInfo{"camera_info.cgi", "host.name=cam host.location=hall", "name=cam&location=hall",
                            "set host 0"};
  const std::string name = "a-B_9." + std::string(30, 'n');
  const std::string place(60, '~');
  cameraInfo.accepts({{"name=cam&location=hall"},
                      {"location=+a%26b+%22c%22", "", "location= a&b \"c\""},
                      {"location=&name=" + name},
                      {"location=" + place}});
  cameraInfo.refuses("name= name=a+b name=new&!other=1 name=n" + name + " location=~" + place);
}

TEST(DgtalkieInfo, TakesNoParameter) {
  const Endpoint dgtalkie{"dgtalkie_info.cgi", "", "dgtalkie=yes&supports=0x01,0x02,0x03,0x04,0x05,0x06"};
  dgtalkie.accepts("");
  dgtalkie.refuses("dgtalkie=yes");
}

const Endpoint kHttpPort{"httpport.cgi", "httpsvr.http_port=80 httpsvr.alt_port=8443 rtspsvr.rtsp_port=554",
                         "httpport=80", "set httpsvr 1"};

TEST(HttpPort, TakesAPortThatNoServerUses) {
  kHttpPort.accepts({{"httpport=65535"}, {"httpport=80-", "", ""}, {"httpport=81-7", "", "httpport=81"}});
  kHttpPort.refuses(
      "httpport=0 httpport=65536 httpport= httpport=80a httpport=-80 httpport=--80 httpport=- httpport=+80 "
      "httpport=80%00 httpport=4294967376 httpport=554 httpport=8443 httpport=8080&!other=1 "
      "a=1&httpport=8080");
  kHttpPort.refuses("httpport=80", "httpsvr.alt_port=80");  // the stored values collide already
  kHttpPort.refuses("httpport=80", "rtspsvr.rtsp_port=80");
}

void expectSurvey(const std::string& state, const std::string& reply) {
  Endpoint{"wlansurvey.cgi", state, reply}.accepts("");
}

TEST(WlanSurvey, ListsTheNetworksThatTheCameraCanJoin) {
  const std::pair<const char*, const char*> rows[] = {
      {"A+b,NONE,OPEN,Infra,1,-50",
       "ssid=A b&signal=100&mode=infrastructure&channel=1&auth=open&encryption=none"},
      {"B,WEP,OPEN,Adhoc,14,-51", "ssid=B&signal=99&mode=Ad-hoc&channel=14&auth=open&encryption=WEP"},
      {"B,WEP,SHARED,infra,2,-80", "ssid=B&signal=24&mode=Ad-hoc&channel=2&auth=shared&encryption=WEP"},
      {"D,AES,WPA2-PSK,Infra,4,-81",
       "ssid=D&signal=23&mode=infrastructure&channel=4&auth=WPA2-PSK&encryption=AES"},
      {"E,TKIP,WPA-PSK,,5,-91", "ssid=E&signal=0&mode=Ad-hoc&channel=5&auth=WPA-PSK&encryption=TKIP"},
      {"F,NONE,WPA-PSK,Infra,7,-2147483648",
       "ssid=F&signal=0&mode=infrastructure&channel=7&auth=WPA-PSK&encryption=none"},
      {",NONE,OPEN,Infra,8,-60", ""},
      {"H,AES,WPA,Infra,8,-60", ""},
      {"H,WPA2,WPA2-PSK,Infra,8,-60", ""},
      {"H,NONE,SHARED,Infra,8,-60", ""}};
  std::string all;
  std::string whole;
  for (const auto& [site, listed] : rows) {
    expectSurvey(std::string{"site="} + site, listed);
    all += std::string{" site="} + site;
    whole += (whole.empty() || *listed == '\0' ? "" : "&") + std::string{listed};
  }
  expectSurvey(all, whole);
  expectSurvey("", "");
}

TEST(WlanSurvey, IsRefusedBeforeItListens) {
  const Endpoint survey{"wlansurvey.cgi"};
  survey.refuses("ssid=A");
  survey.refuses("!", "product.wireless=0", 404);
  survey.refuses("a=1", "product.unreadable=1");
  EXPECT_EQ(scripted().history({"ask"}), "");
}

TEST(WlanSignal, IsTheDriversNumber) {
  const Endpoint signal{"wlansignal.cgi", "rssi=-42", "signal=-42"};
  signal.accepts("");
  signal.refuses("signal=1");
}

TEST(SystemCommand, StartsOnGoAlone) {
  const Endpoint reboot{"system_reboot.cgi", "", "",
                        "run ( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &"};
  const Endpoint reset{"system_reset.cgi", "", "",
                       "run ( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &"};
  reboot.accepts({{"reboot=go", "", "reboot=yes"}});
  reset.accepts({{"reset=go", "", "reset=yes"}});
  reboot.refuses("!reboot reboot= reboot=Go reboot=go%00 reboot%00=go reset=go reboot=go&!reset=go");
}

}  // namespace
}  // namespace camera::test
