// Tests of every endpoint in the dispatcher's table: each platform call fails once, hostile requests change
// nothing, and the documentation has a section.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include "framework/endpoint_table.h"
#include "platform/store/record_fields.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

struct Sweep {
  std::string cgi;
  std::string query;  // changes everything that it can; the plain read if the endpoint only reports
  std::string state{};
  std::string exceptions{};  // "get ftp=400": the status if this call fails, in place of that in kFailures
};

// In alphabetical order. An endpoint has several rows if one request cannot make all its calls.
const Sweep kSweeps[] = {
    {"action_ftp.cgi",
     "enable=yes&host=h&port=2&path=/p&prefix=x&user=u&pass=cA%3D%3D&passive=no&interval=10"},
    {"action_mail.cgi", "enable=yes&sender=a@b.c&to=a@b.c&host=h&port=2&user=u&pass=cA%3D%3D"},
    {"audio.cgi", "profileid=2"},
    {"audio_detection.cgi", "enable=yes&sensitivity=90"},
    {"auto_pan.cgi", "act=go"},
    {"auto_patrol.cgi", "act=go", "route.stops=1 ptd.preset0=1,2,a"},
    {"auto_patrol.cgi", "act=stop"},
    {"camera_info.cgi", "name=new&location=here"},
    {"config_auto_patrol.cgi", "presets=b,a", "ptd.preset0=1,2,a ptd.preset1=3,4,b"},
    {"datetime.cgi", "method=2&date=2024-02-29&time=13:05:00&timezone=1&dstenable=yes&timeserver=a",
     "ntp.method=1"},
    {"datetime.cgi", "timezone=1&timeserver=a", "", "get curtime#2=400"},
    {"ddns.cgi", "ddns=on&provider=velkorddns&host=h&user=u&pass=p"},
    {"detection_push.cgi", "sound_push=yes&motion_enable=yes&pir_enable=yes"},
    {"dgtalkie_info.cgi", ""},
    {"env_sound_lv.cgi", ""},
    {"event_info.cgi", ""},
    {"event_log.cgi", "", "", "get send_cmd logd 402=200"},
    {"group_list.cgi", "name=Users"},
    {"httpport.cgi", "httpport=8080"},
    {"icr.cgi", "mode=night"},
    {"info.cgi", "", "eth0= ra0=10.0.0.9"},
    {"io.cgi", "", "product.input_count=2 product.output_count=1"},
    {"io.cgi", "out2=off&out1=on", "product.output_count=2"},
    {"irled.cgi", "mode=on", "ir.icr_mode=1"},
    {"mic.cgi", "enable=no&volume=10"},
    {"motion.cgi", "enable=yes&mbmask=f&sensitivity=1&pir=yes&pir_sensitivity=0", "motiond.mbmask=0"},
    {"network.cgi",
     "dhcp=off&pppoe=on&ddns=on&ddnshost=h&ddnsuser=u&ddnspass=p&upnp=on&httpport=81&rtspport=82",
     "pppoe.user=u ddns.provider=dyndns"},
    {"notify.cgi", "", "product.output_count=1", "get watchdog 620=200, get host=200"},
    {"pppoe.cgi", "pppoe=on&user=u&pass=p"},
    {"privacy.cgi", "enable=yes&manual=on"},
    {"ptz_direction.cgi", "direction=left&speed=2"},
    {"ptz_direction.cgi", "direction=stop&speed=2"},
    {"ptz_home.cgi", "act=set&p=1", "ptd.position=10,5"},
    {"ptz_home.cgi", "act=go"},
    {"ptz_home.cgi", "act=reset"},
    {"ptz_info.cgi", ""},
    {"ptz_move.cgi", "p=1&t=2"},
    {"ptz_move.cgi", "t=2"},
    {"ptz_move.cgi", ""},
    {"ptz_move_rel.cgi", "t=1"},
    {"ptz_pos.cgi", ""},
    {"ptz_preset.cgi", "act=add&name=a"},
    {"ptz_preset.cgi", "act=go&name=a", "ptd.preset0=1,2,a"},
    {"ptz_preset_list.cgi", ""},
    {"rtspurl.cgi", "profileid=1&urlentry=a"},
    {"sdcard.cgi", "", "sd.state=2 sd.free=1"},
    {"sdcard_delete.cgi", "name=d:a", "sd.state=2 sd.free=1 card=d,folder card=a,1",
     "get card folder=400, get card folder#2=200"},
    {"sdcard_download.cgi", "file=a", "sd.state=2 sd.free=1 card=a,locked", "get card folder=200"},
    {"sdcard_format.cgi", "format=go", "sd.state=2 sd.free=1",
     "get sd#2=500, get record#3=500, get system=500"},
    {"sdcard_list.cgi", "path=d&page=1&pagesize=10&type=video",
     "sd.state=2 sd.free=1 card=d,folder card=d/a,1 card=d/f,folder", "get card folder=400"},
    {"sensor.cgi", "brightness=0&contrast=0&mirror=on&noisereduction=off"},
    {"sensor_info.cgi", ""},
    {"sensor_output.cgi", "current=SXGA-1280x1024", "motiond.enable=1", "set motiond=500, set profile=500"},
    {"sensor_output.cgi", "current=PAL-704x576", "product.display_systems=PAL-704x576",
     "set image=500, set profile=500"},
    {"sensor_reset.cgi", "reset=go", "", "get product=200, set image to factory=200"},
    {"speaker.cgi", "enable=no&volume=10"},
    {"stream_auth.cgi", "livevideo=off&snapshoturl=off", "", "set httpsvr=500"},
    {"stream_info.cgi", ""},
    {"sw_input.cgi", "trigger=on"},
    {"system_reboot.cgi", "reboot=go"},
    {"system_reset.cgi", "reset=go"},
    {"timestamp.cgi", "enable=on&showtime=on&label=a"},
    {"user_del.cgi", "name=ann", "account.user_count=1 account.user_name[1]=ann"},
    {"user_list.cgi", ""},
    {"user_mod.cgi", "name=admin&newname=root&password=bG9uZ2VyIQ%3D%3D", "system.brand=Larkmoor"},
    {"video.cgi",
     "profileid=1&codec=H264&resolution=320x240&framerate=30&qualitymode=Fixquality&quality=100&bitrate=64"},
    {"wireless.cgi", "enable=on&mode=ad-hoc&essid=n&channel=6&encryption=WEP&auth=open&key1=abcde"},
    {"wlansignal.cgi", ""},
    {"wlansurvey.cgi", "", "site=A,NONE,OPEN,Infra,1,-50"},
};
const std::set<std::string> kIgnoreUnknownNames = {"action_ftp.cgi", "action_mail.cgi", "event_log.cgi",
                                                   "sensor.cgi",     "stream_auth.cgi", "user_del.cgi"};

// The status of a request if a call with that verb has that result.
constexpr struct {
  const char* verb;
  int result;
  int status;
} kFailures[] = {{"get", 2, 500},          {"get", -1, 500},  {"set", 1, 400},      {"set", 2, 500},
                 {"set", kOvertaken, 200}, {"send", -1, 500}, {"send ptd", 1, 500}, {"send watchdog", 1, 500},
                 {"ask", 1, 200},          {"time", 1, 200},  {"run", -1, 200},     {"work", 9, 200}};
const std::vector<std::string> kChanges = {"set", "send", "run", "work"};

Reply serveSweep(const Sweep& sweep, const std::map<std::string, int>& results = {}) {
  scripted().reset(sweep.state);
  scripted().results = results;
  return request(sweep.cgi, sweep.query);
}

// What was changed after the call of that name.
std::string changesAfter(const std::string& call) {
  std::vector<std::string>& calls = scripted().calls;
  calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), call) + 1);
  return scripted().history(kChanges);
}

// True if every record that was read before an overtaken write was read again after it.
bool isReadAgain(const std::string& write) {
  const std::vector<std::string>& calls = scripted().calls;
  const auto written = std::find(calls.begin(), calls.end(), write);
  return std::all_of(calls.begin(), written, [&](const std::string& call) {
    const std::string again = call.substr(0, call.find('#')) + "#";
    const auto isSame = [&](const std::string& later) { return later.starts_with(again); };
    return !isA("get", call) || isA("get product", call) || std::any_of(written, calls.end(), isSame);
  });
}

void failOneCall(const Sweep& sweep, const std::string& call, const Reply& plain) {
  int ways = 0;
  for (const auto& [verb, result, status] : kFailures) {
    if (!isA(verb, call)) continue;
    SCOPED_TRACE(sweep.cgi + "?" + sweep.query + "  with " + call + " giving " + std::to_string(result));
    ++ways;
    const bool isOvertaken = result == kOvertaken;
    const std::size_t at = (" " + sweep.exceptions).find(" " + call + "=");
    const bool isAsUsual = isOvertaken || at == std::string::npos;
    const int expected = isAsUsual ? status : std::stoi(sweep.exceptions.substr(at + call.size() + 1));
    const Reply reply = serveSweep(sweep, {{call, result}});
    if (expected != 200) {
      EXPECT_TRUE(isFailure(reply, expected)) << reply.status << reply.body;
      EXPECT_EQ(changesAfter(call), "");
    }
    EXPECT_TRUE(expected != 200 || reply.status == 200) << reply.status << reply.body;
    EXPECT_TRUE(!isOvertaken || (reply.body == plain.body && isReadAgain(call))) << reply.body;
  }
  EXPECT_GT(ways, 0) << "nobody says what it means that this fails: " << call;
}

TEST(FaultSweep, AFailingCallIsAnsweredAndNothingIsWrittenOrRunAfterIt) {
  for (const Sweep& sweep : kSweeps) {
    SCOPED_TRACE(sweep.cgi + "?" + sweep.query);
    const Reply plain = serveSweep(sweep);
    EXPECT_EQ(plain.status, 200) << plain.body;
    const std::vector<std::string> calls = scripted().calls;
    for (const std::string& call : calls) failOneCall(sweep, call, plain);
  }
}

TEST(EveryEndpoint, HasARowAndASectionOfTheDocumentation) {
  std::ifstream file(CAMERA_SOURCE_DIR "/docs/api.md");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  std::set<std::string> rows;
  for (const Sweep& sweep : kSweeps) rows.insert(sweep.cgi);
  for (const EndpointEntry& entry : endpointTable()) {
    EXPECT_TRUE(rows.contains(std::string{entry.name})) << entry.name;
    EXPECT_NE(text.find("\n## " + std::string{entry.name} + "\n"), text.npos) << entry.name;
  }
}

TEST(EveryEndpoint, RefusesAHostileRequestAndChangesNothing) {
  const std::string hostile[] = {
      "nobody=1", "=", "%00=%00", "a%0d%0aStatus:=200", "'%3breboot%3b'=$(reboot)", "../../etc=%ff%fe"};
  for (const Sweep& sweep : kSweeps) {
    const bool isIgnored = kIgnoreUnknownNames.contains(sweep.cgi);
    for (const std::string& query : hostile) {
      SCOPED_TRACE(sweep.cgi + "?" + query.substr(0, 40));
      scripted().reset(sweep.state);
      const Reply reply = request(sweep.cgi, query);
      EXPECT_TRUE(isIgnored ? reply.status == 200 : isFailure(reply, 400)) << reply.body;
      EXPECT_EQ(scripted().history(kChanges), "");
    }
  }
}

// How many values of a reply are empty.
std::ptrdiff_t emptyValues(const Reply& reply) {
  static const std::string kEnd = "=&";
  const std::string lines = reply.body + "&";
  std::ptrdiff_t count = 0;
  for (std::size_t at = lines.find(kEnd); at != lines.npos; at = lines.find(kEnd, at + 1)) ++count;
  return count;
}

void expectWordsAtBounds(const Sweep& sweep, const std::string& plain, const RecordInfo& info) {
  forEachElement(info, [&](const Field& field, unsigned index, std::size_t /*offset*/) {
    if (field.kind != FieldKind::kByte && field.kind != FieldKind::kInteger) return;
    if (info.name == std::string_view{"sd"}) return;  // most codes of its state have no word
    const std::string name = std::string{info.name} + "." + elementName(field, index) + "=";
    scripted().reset(sweep.state);
    const Reply before = request(sweep.cgi, plain);
    for (const std::int32_t bound : {field.min, field.max}) {
      scripted().reset(sweep.state + " " + name + std::to_string(bound));
      const Reply reply = request(sweep.cgi, plain);
      EXPECT_EQ(reply.status, 200) << sweep.cgi << " on " << name << bound;
      EXPECT_LE(emptyValues(reply), emptyValues(before))
          << sweep.cgi << " on " << name << bound << ": " << reply.body;
    }
  });
}

// Where an endpoint shows a word for a number, every number that the store accepts must have one:
// camera-settings or other firmware may have stored it.
TEST(EveryEndpoint, FindsAWordForEveryNumberAtItsBounds) {
  for (const Sweep& sweep : kSweeps) {
    const std::string first = sweep.query.substr(0, sweep.query.find('&'));
    for (const std::string& plain : {std::string{}, first}) {
      scripted().reset(sweep.state);
      if (request(sweep.cgi, plain).status != 200 || !scripted().writes().empty()) continue;
      const std::set<std::string> calls(scripted().calls.begin(), scripted().calls.end());
      for (const RecordInfo* info : kRecords)
        if (calls.contains(std::string{"get "} + info->name)) expectWordsAtBounds(sweep, plain, *info);
      break;
    }
  }
}

}  // namespace
}  // namespace camera::test
