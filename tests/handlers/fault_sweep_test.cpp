// What holds for every endpoint of the dispatcher's table: every call of the platform that fails, hostile and
// oversized requests, the documentation.
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
  std::string query;  // changes everything that it can; of an endpoint that only answers, the plain read
  // That it makes, in order, but for those that clean and run actions and read the clock. "get ftp=400":
  // where this call fails the answer is not that of kFailures.
  std::string calls;
  std::string state{};
};

// In alphabetical order; a second row where one request cannot make all the calls.
const Sweep kSweeps[] = {
    {"action_ftp.cgi",
     "enable=yes&host=h&port=2&path=/p&prefix=x&user=u&pass=cA%3D%3D&passive=no&interval=10",
     "get ftp get snapshot set ftp set snapshot"},
    {"action_mail.cgi", "enable=yes&sender=a@b.c&to=a@b.c&host=h&port=2&user=u&pass=cA%3D%3D",
     "get smtp set smtp"},
    {"audio.cgi", "profileid=2", ""},
    {"audio_detection.cgi", "enable=yes&sensitivity=90", "get audiodetection set audiodetection"},
    {"auto_pan.cgi", "act=go", "get product send ptd 34"},
    {"auto_patrol.cgi", "act=go", "get product send ptd 35", "route.stops=1 ptd.preset0=1,2,a"},
    {"auto_patrol.cgi", "act=stop", "get product send ptd 16"},
    {"camera_info.cgi", "name=new&location=here", "get host set host"},
    {"config_auto_patrol.cgi", "presets=b,a", "get product get route get ptd 4 set route",
     "ptd.preset0=1,2,a ptd.preset1=3,4,b"},
    {"datetime.cgi", "method=2&date=2024-02-29&time=13:05:00&timezone=1&dstenable=yes&timeserver=a",
     "ask zone get ntp get tzone get curtime set tzone set curtime set ntp", "ntp.method=1"},
    {"datetime.cgi", "timezone=1&timeserver=a",
     "ask zone get ntp get tzone get curtime set tzone set ntp get curtime#2=400"},
    {"ddns.cgi", "ddns=on&provider=velkorddns&host=h&user=u&pass=p", "get ddns set ddns"},
    {"detection_push.cgi", "sound_push=yes&motion_enable=yes&pir_enable=yes",
     "get audiodetection get motiond get gpio get system get product set audiodetection set motiond set "
     "gpio"},
    {"dgtalkie_info.cgi", "", ""},
    {"env_sound_lv.cgi", "", ""},
    {"event_info.cgi", "", "get product"},
    {"event_log.cgi", "", "get send_cmd logd 402=200"},
    {"group_list.cgi", "name=Users", "get account get product"},
    {"httpport.cgi", "httpport=8080", "get httpsvr get rtspsvr set httpsvr"},
    {"icr.cgi", "mode=night", "get product get ir set ir"},
    {"info.cgi", "", "get system get host get gpio get product ask ppp0 ask eth0 get ra0",
     "eth0= ra0=10.0.0.9"},
    {"io.cgi", "", "get product get watchdog 615 get watchdog 620 get watchdog 616",
     "product.input_count=2 product.output_count=1"},
    {"io.cgi", "out2=off&out1=on",
     "get product send watchdog 606 send watchdog 625 get watchdog 620 get watchdog 621",
     "product.output_count=2"},
    {"irled.cgi", "mode=on", "get product get ir set ir", "ir.icr_mode=1"},
    {"mic.cgi", "enable=no&volume=10", "get product get audio set audio"},
    {"motion.cgi", "enable=yes&mbmask=f&sensitivity=1&pir=yes&pir_sensitivity=0",
     "get motiond get gpio get product get profile set motiond set gpio", "motiond.mbmask=0"},
    {"network.cgi",
     "dhcp=off&pppoe=on&ddns=on&ddnshost=h&ddnsuser=u&ddnspass=p&upnp=on&httpport=81&rtspport=82",
     "get lan get pppoe get ddns get httpsvr get rtspsvr get upnp set lan set pppoe set ddns set upnp "
     "set httpsvr set rtspsvr",
     "pppoe.user=u ddns.provider=dyndns"},
    {"notify.cgi", "", "get product get watchdog 620=200 get audio get ir get host=200",
     "product.output_count=1"},
    {"pppoe.cgi", "pppoe=on&user=u&pass=p", "get pppoe set pppoe"},
    {"privacy.cgi", "enable=yes&manual=on", "get product get privacy set privacy"},
    {"ptz_direction.cgi", "direction=left&speed=2", "get product get ptd 19 get ptd 1 send ptd 3 2 0"},
    {"ptz_direction.cgi", "direction=stop&speed=2", "get product send ptd 16"},
    {"ptz_home.cgi", "act=set&p=1",
     "get product get ptd 19 get ptd 1 send ptd 2 -41 5 get ptd 1#2 send ptd 24 get ptd 32",
     "ptd.position=10,5"},
    {"ptz_home.cgi", "act=go", "get product get ptd 19 send ptd 8 get ptd 32"},
    {"ptz_home.cgi", "act=reset", "get product get ptd 19 send ptd 25 get ptd 32"},
    {"ptz_info.cgi", "", "get product get ptd 19"},
    {"ptz_move.cgi", "p=1&t=2", "get product get ptd 19 send ptd 2 -41 2"},
    {"ptz_move.cgi", "t=2", "get product get ptd 19 get ptd 1 send ptd 2 0 2"},
    {"ptz_move.cgi", "", "get product get ptd 19 get ptd 1"},
    {"ptz_move_rel.cgi", "t=1", "get product get ptd 19 get ptd 1 send ptd 3 0 1"},
    {"ptz_pos.cgi", "", "get product get ptd 1 get ptd 19"},
    {"ptz_preset.cgi", "act=add&name=a", "get product get ptd 4 send ptd 6 0 a"},
    {"ptz_preset.cgi", "act=go&name=a", "get product get ptd 4 send ptd 7 0", "ptd.preset0=1,2,a"},
    {"ptz_preset_list.cgi", "", "get product get ptd 4 get ptd 19"},
    {"rtspurl.cgi", "profileid=1&urlentry=a", "get rtspsvr set rtspsvr"},
    {"sdcard.cgi", "", "get product get sd get record", "sd.state=2 sd.free=1"},
    {"sdcard_delete.cgi", "name=d:a",
     "get product get sd get record get system get card folder=400 get card folder#2=200 get card names ask "
     "for entry /d run rm -rf '/mnt/usb/IPCAM/d' ask for entry /a run remove a get sd#2 get record#2",
     "sd.state=2 sd.free=1 card=d,folder card=a,1"},
    {"sdcard_download.cgi", "file=a",
     "get product get sd get record get system get card folder=200 ask for entry /a ask to read a",
     "sd.state=2 sd.free=1 card=a,locked"},
    {"sdcard_format.cgi", "format=go",
     "get product get sd get record get record#2 run sdmanage.sh format >> /tmp/sd.txt ask 1 s get sd#2=500 "
     "get record#3=500 get system=500 run mkdir /mnt/usb/IPCAM",
     "sd.state=2 sd.free=1"},
    {"sdcard_list.cgi", "path=d&page=1&pagesize=10&type=video",
     "get product get sd get record get system get card folder=400 get sd#2 get record#2 get card names ask "
     "to examine a ask to examine f get sd#3 get record#3",
     "sd.state=2 sd.free=1 card=d,folder card=d/a,1 card=d/f,folder"},
    {"sensor.cgi", "brightness=0&contrast=0&mirror=on&noisereduction=off",
     "get product get image get product#2=200 set image"},
    {"sensor_info.cgi", "", "get product get profile get product#2=200 get image"},
    {"sensor_output.cgi", "current=SXGA-1280x1024",
     "get product get profile get profile#2 get motiond set motiond=500 set profile=500", "motiond.enable=1"},
    {"sensor_output.cgi", "current=PAL-704x576",
     "get product get profile get profile#2 get image set image=500 set profile=500",
     "product.display_systems=PAL-704x576"},
    {"sensor_reset.cgi", "reset=go", "set image to factory=200"},
    {"speaker.cgi", "enable=no&volume=10", "get product get audio set audio"},
    {"stream_auth.cgi", "livevideo=off&snapshoturl=off", "get httpsvr set httpsvr=500"},
    {"stream_info.cgi", "", "get profile get audio get profile#2 get product get product#2"},
    {"sw_input.cgi", "trigger=on", "send eventd 9 0 0"},
    {"system_reboot.cgi", "reboot=go", "run ( sleep 5 && /sbin/reboot ) >/dev/null 2>/dev/null &"},
    {"system_reset.cgi", "reset=go",
     "run ( sleep 5 && factoryReset && /sbin/reboot ) >/dev/null 2>/dev/null &"},
    {"timestamp.cgi", "enable=on&showtime=on&label=a", "get osd set osd"},
    {"user_del.cgi", "name=ann", "get account set account", "account.user_count=1 account.user_name[1]=ann"},
    {"user_list.cgi", "", "get account"},
    {"user_mod.cgi", "name=admin&newname=root&password=bG9uZ2VyIQ%3D%3D",
     "get account get system get product set account", "system.brand=Larkmoor"},
    {"video.cgi",
     "profileid=1&codec=H264&resolution=320x240&framerate=30&qualitymode=Fixquality&quality=100&bitrate=64",
     "get profile get profile#2 get product set profile"},
    {"wireless.cgi", "enable=on&mode=ad-hoc&essid=n&channel=6&encryption=WEP&auth=open&key1=abcde",
     "get product get wireless set wireless"},
    {"wlansignal.cgi", "", "ask rssi"},
    {"wlansurvey.cgi", "", "get product ask sites", "site=A,NONE,OPEN,Infra,1,-50"},
};
const std::set<std::string> kIgnoreUnknownNames = {"action_ftp.cgi", "action_mail.cgi", "event_log.cgi",
                                                   "sensor.cgi",     "stream_auth.cgi", "user_del.cgi"};

// What the result of a call makes of a request, by the call's verb.
constexpr struct {
  const char* verb;
  int result;
  int status;
} kFailures[] = {{"get", 2, 500},          {"get", -1, 500},  {"set", 1, 400},      {"set", 2, 500},
                 {"set", kOvertaken, 200}, {"send", -1, 500}, {"send ptd", 1, 500}, {"send watchdog", 1, 500},
                 {"ask", 1, 200},          {"time", 1, 200},  {"run", -1, 200},     {"work", 9, 200}};
const std::vector<std::string> kVerbs = {"get", "set", "send", "ask", "run"};
const std::vector<std::string> kChanges = {"set", "send", "run", "work"};

Reply serveSweep(const Sweep& sweep, const std::map<std::string, int>& results = {}) {
  scripted().reset(sweep.state);
  scripted().results = results;
  return request(sweep.cgi, sweep.query);
}

// What was done after the call of that name.
std::string callsAfter(const std::string& call) {
  std::vector<std::string>& calls = scripted().calls;
  calls.erase(calls.begin(), std::find(calls.begin(), calls.end(), call) + 1);
  return scripted().history({"get", "set", "send", "run", "work"});
}

// The calls that a row still expects after one of its reads failed: one endpoint makes all the others.
std::string readsAfter(const Sweep& sweep, const std::string& call) {
  if (sweep.cgi != "detection_push.cgi" || !isA("get", call)) return "";
  const std::size_t end = sweep.calls.find(" set ");
  const std::size_t begin = std::min(sweep.calls.find(call) + call.size() + 1, end);
  return sweep.calls.substr(begin, end - begin);
}

// Whether, after a write that was overtaken, every record that it rested on was read again.
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
    const std::string calls = " " + sweep.calls;
    const std::size_t at = calls.find(" " + call + "=");
    const bool isAsUsual = isOvertaken || at == calls.npos;
    const int expected = isAsUsual ? status : std::stoi(calls.substr(at + call.size() + 2));
    const Reply reply = serveSweep(sweep, {{call, result}});
    if (expected != 200) {
      EXPECT_TRUE(isFailure(reply, expected)) << reply.status << reply.body;
      EXPECT_EQ(callsAfter(call), readsAfter(sweep, call));
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
    std::string expected = sweep.calls;
    while (expected.find('=') != expected.npos) expected.erase(expected.find('='), 4);
    EXPECT_EQ(scripted().history(kVerbs), expected);
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

TEST(EveryEndpoint, TakesTheLongestQueryAndFormAndRefusesALongerOne) {
  for (const Sweep& sweep : kSweeps) {
    SCOPED_TRACE(sweep.cgi);
    const Reply plain = serveSweep(sweep);
    const std::string longest = sweep.query + std::string(65536 - sweep.query.size(), '&');
    for (const auto& [input, fits] : {std::pair{get(longest), true},
                                      {post(longest), true},
                                      {get(longest + "&"), false},
                                      {post(longest + "&"), false}}) {
      scripted().reset(sweep.state);
      const Reply reply = request(sweep.cgi, input);
      EXPECT_TRUE(fits ? reply.body == plain.body : isFailure(reply, 400)) << reply.body;
      EXPECT_TRUE(fits || scripted().history(kChanges).empty());
    }
  }
}

// The words of a reply that are empty.
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

// What is stored may have come from anywhere: a number that stands for a word stands for one at its bounds
// too.
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
