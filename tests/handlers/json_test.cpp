// JSON requests and replies of the endpoints, where text has another form.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kPresets[] = "ptd.preset0=-170,5,presets ptd.preset4=130,-3,7";
constexpr char kCard[] = "sd.state=2 sd.free=1 system.model=Cam card=b'.avi,1025 card=d,folder card=d/x,1";
constexpr char kAccounts[] = "account.user_count=2 account.user_name[1]=ann account.user_name[2]=12";
constexpr char kSensor[] =
    "product.sensor=ov7725 product.sensor_caps=Brightness+BLCompensation+BLControl+Frequency+NightShot "
    "product.max_exposure_times=1/30+1/8";

struct JsonRow {
  const char* cgi;
  const char* state;
  const char* query;
  const char* body;
  int status;
  const char* reply;  // or the start of one that ends with *
};

TEST(JsonReply, HasNamedPartsWhereTextHasLists) {
  const JsonRow rows[] = {
      {"ptz_preset_list.cgi", kPresets, "", "", 200,
       R"({"presets":[{"name":"presets","p":130,"t":5},{"name":"7","p":-170,"t":-3}]})"},
      {"config_auto_patrol.cgi", kPresets, "", R"({"presets":["7","presets"]})", 200,
       R"({"presets":["7","presets"]})"},
      {"user_list.cgi", kAccounts, "", "", 200,
       R"({"users":[{"name":"admin","group":"Administrator"},{"name":"ann","group":"Users"},{"name":"12","group":"Users"}]})"},
      {"group_list.cgi", kAccounts, "", "", 200,
       R"({"groups":[{"name":"Administrator","members":["admin"]},{"name":"Users","members":["ann","12"]}]})"},
      {"group_list.cgi", kAccounts, "name=Users", "", 200, R"({"user":["ann","12"],"privilege":["pt*)"},
      {"user_del.cgi", kAccounts, "", R"({"name":["12"]})", 200, R"({"name":["12"]})"},
      {"sdcard_list.cgi", kCard, "", "", 200,
       R"({"sd_status":"ready","path":"","page":1,"pagesize":5,"total_file":2,"total_page":1,"num":2,"items":[{"name":"d","type":"folder","entries":1},{"name":"b'.avi","type":"file","kib":2}]})"},
      {"sdcard_delete.cgi", kCard, "path=d/", R"({"name":["x","y"]})", 200,
       R"({"sd_status":"ready","num":1,"path":"d/","items":[{"name":"x","type":"file","result":0},{"name":"y","type":"none","result":1}]})"},
      {"sdcard_download.cgi", kCard, "file=x", "", 404,
       R"({"error":404,"parameter":"file","message":"no such file or folder"})"},
      {"sdcard_download.cgi", kCard, "file=d", "", 404,
       R"({"error":404,"parameter":"file","message":"not a file*)"},
      {"sdcard_download.cgi", kCard, "file=b'.avi", "", 307, R"({"error":307})"},
      {"sensor.cgi", kSensor, "zoom=3&=1", R"({"backlightcomp":"yes","brightness":55})", 400,
       R"({"error":400,"parameter":"backlightcomp","message":"0 to 255"})"},
      {"sensor.cgi", kSensor, "", R"({"zoom":true,"":1,"a,b":[]})", 200,
       R"({"brightness":50,"flicker":"50","maxexposuretime":30,"backlightcomp":[0,"no"],"ignored":["","a,b","zoom"]})"},
      {"sensor_info.cgi", kSensor, "", "", 200, R"({"brightness":[0,5,10*)"},
      {"sensor.cgi", kSensor, "", R"({"brightness":[55]})", 400,
       R"({"error":400,"parameter":"brightness","message":"an array is only for a list"})"},
      {"mic.cgi", "", "", R"({"colour":["a,b"]})", 400,
       R"({"error":400,"parameter":"colour","message":"no such parameter"})"},
      {"mic.cgi", "", "", R"({"enable":true,"volume":40})", 200, R"({"enable":"yes","volume":40})"},
      {"mic.cgi", "", "", R"({"enable":[true]})", 400,
       R"({"error":400,"message":"body: expected a text or an integer at byte 12"})"},
      {"mic.cgi", "", "", R"({"volume":true})", 400,
       R"({"error":400,"parameter":"volume","message":"true and false*)"},
      {"mic.cgi", "", "", R"({"enable":["yes"]})", 400,
       R"({"error":400,"parameter":"enable","message":"an array*)"},
      {"mic.cgi", "", "", R"({"colour":true})", 400,
       R"({"error":400,"parameter":"colour","message":"no such parameter"})"},
      {"user_del.cgi", kAccounts, "", R"({"name":["ann,12"]})", 400,
       R"({"error":400,"parameter":"name","message":"no item may hold ,"})"},
      {"ptz_pos.cgi", "product.has_pan_tilt=0", "", "", 404,
       R"({"error":404,"message":"this camera has no pan/tilt head"})"},
      {"wlansurvey.cgi", "site=A,NONE,OPEN,Infra,1,-50", "", "", 200,
       R"({"networks":[{"ssid":"A","signal":100,"mode":"infrastructure","channel":1,"auth":"open","encryption":"none"}]})"},
      {"wlansurvey.cgi", "", "", "", 200, R"({"networks":[]})"},
      {"stream_info.cgi", "product.sensor=ov7740", "", "", 200, R"({"videos":["MJPEG","MPEG4","H264"],*)"},
      {"event_log.cgi", "line=a line=b+by+Motion+Detection line=c+by+Sound+Detection", "x=1", "", 200,
       R"({"lines":["md b by Motion Detection","sd c by Sound Detection"],"ignored":["x"]})"},
  };
  for (const auto& [cgi, state, query, body, status, expected] : rows) {
    SCOPED_TRACE(std::string{cgi} + "?" + query + " " + body);
    scripted().reset(state);
    const Reply reply = request(cgi, json(body, query));
    EXPECT_EQ(reply.status, status);
    const std::string_view whole = expected;
    if (whole.ends_with('*'))
      EXPECT_EQ(reply.body.substr(0, whole.size() - 1), whole.substr(0, whole.size() - 1));
    else
      EXPECT_EQ(reply.body, whole);
  }
}

TEST(JsonReply, WarnsIfTheServerListensOnNeitherStoredPort) {
  for (const char* cgi : {"httpport.cgi", "network.cgi"}) {
    for (const auto& [port, warns] : {std::pair{"80", false}, {"443", false}, {"81", true}}) {
      scripted().reset();
      CgiInput input = json("");
      input.environment["SERVER_PORT"] = port;
      EXPECT_EQ(request(cgi, input).body.find("\"warnings\":[\"httpport: ") != std::string::npos, warns)
          << cgi << port;
    }
  }
}

}  // namespace
}  // namespace camera::test
