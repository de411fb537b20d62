// What a fuzzer gives to the code that reads from outside, and what must be true afterwards. The first byte
// of an input chooses the target; a file of the corpus is an input that once reached something new or wrong.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <set>

#include "framework/endpoint_list.h"
#include "framework/endpoint_table.h"
#include "framework/json.h"
#include "handlers/api.h"
#include "platform/network/site_survey.h"
#include "platform/store/settings_command.h"
#include "platform/store/settings_store.h"
#include "services/events/status_events.h"
#include "tests/fuzz/well_formed.h"
#include "tests/handlers/scripted_daemons.h"
#include "tests/handlers/scripted_platform.h"
#include "tests/platform/memory_disk.h"
#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

void require(bool isTrue, std::string_view what, std::string_view about = {}) {
  if (isTrue) return;
  std::cerr << "violated: " << what << "\n" << about << "\n";
  std::abort();
}

// The input, taken from its start.
class Input {
 public:
  explicit Input(std::string_view bytes) : rest_{bytes} {}
  std::string_view rest() const { return rest_; }
  unsigned number() {
    const unsigned byte = rest_.empty() ? 0 : static_cast<unsigned char>(rest_[0]);
    rest_.remove_prefix(std::min<std::size_t>(1, rest_.size()));
    return byte;
  }
  std::string_view line() {
    const std::string_view found = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(std::min(found.size() + 1, rest_.size()));
    return found;
  }

 private:
  std::string_view rest_;
};

// ---- Parsers

void parseForms(Input input) {
  Queries queries;
  parseForm(input.rest(), queries);
  for (const auto& [name, value] : queries) require(isUtf8(name) && isUtf8(value), "a form is UTF-8");
}

void parseBodies(Input input) {
  std::vector<JsonMember> members;
  parseJson(input.rest(), &members);
  const std::string text = jsonString(input.rest());
  require(JsonReader{text}.isWhole() && isUtf8(text), "a JSON string is one", text);
  members.clear();
  require(parseJson("{\"a\":" + text + "}", &members).empty(), "our own JSON can be read", text);
  require(members[0].texts[0] == decodeUtf8(input.rest()), "a text survives JSON", text);
}

void readSurvey(Input input) {
  parseRssi(input.rest());
  parseSites(input.rest());
}

void readPackages(Input input) {
  StatusPackage package{};
  std::memcpy(&package, input.rest().data(), std::min(sizeof package, input.rest().size()));
  for (const events::StatusEvent& event : events::eventsOf(package)) {
    const std::string text = events::streamText(1, "2026-11-26T12:34:56.789", event);
    require(text.ends_with("\n\n") && text.find("\n\n") == text.size() - 2, "an event is one block", text);
  }
}

// ---- The settings store

void readRecords(Input input) {
  const RecordInfo& info = *kRecords[input.number() % kRecords.size()];
  MemoryDisk disk;
  require(disk.create(info.name) == 0 && disk.write(input.rest().data(), input.rest().size()) == 0,
          "the disk");
  disk.close();
  SettingsStore store{disk, kRecords};
  std::vector<std::uint8_t> record(info.size), again(info.size);
  if (store.read(info, record.data()) != StoreResult::kDone) return;
  require(store.overwrite(info, record.data()) == StoreResult::kDone, "what is read can be stored",
          store.fault());
  require(store.read(info, again.data()) == StoreResult::kDone && record == again, "and is the same",
          info.name);
}

std::string backupOf(SettingsStore& store) {
  CommandStreams streams{.input = -1, .output = {}, .error = {}};
  const std::string_view words[] = {"backup"};
  require(runSettingsCommand(store, "settings", words, &streams) == 0, "a backup can be made", streams.error);
  return streams.output;
}

int restore(SettingsStore& store, std::string_view backup) {
  const int file = memfd_create("backup", 0);
  require(write(file, backup.data(), backup.size()) == std::ssize(backup) && lseek(file, 0, SEEK_SET) == 0,
          "a file");
  CommandStreams streams{.input = file, .output = {}, .error = {}};
  const std::string_view words[] = {"restore"};
  const int status = runSettingsCommand(store, "settings", words, &streams);
  close(file);
  require((status == 0) == streams.error.empty(), "a failure says why", streams.error);
  return status;
}

// The input replaces a part of a true backup.
void restoreBackups(Input input) {
  MemoryDisk disk;
  SettingsStore store{disk, kRecords};
  static const std::string kFactory = backupOf(store);
  const std::size_t at = (input.number() * 256U + input.number()) % kFactory.size();
  const std::size_t length = input.number();
  std::string backup = kFactory;
  backup.replace(at, length, input.rest());
  const int status = restore(store, backup);
  const std::string stored = backupOf(store);
  if (status != 0) require(stored == kFactory, "a refused backup changes nothing", backup);
  require(restore(store, stored) == 0 && backupOf(store) == stored, "a backup restores what it holds",
          stored);
}

// ---- Endpoints

struct Served {
  const char* name;
  const Api& (*api)();
};
template <class Class>
struct ServedOf {
  static constexpr auto kValue = EndpointOf<Class>::api;
};

constexpr const char* kStates[] = {
    "",
    "ptd.preset0=1,2,a ptd.preset3=-5,4,b route.stops=1 io.inputs=0,1,1,0",
    "sd.state=2 sd.free=1 card=d,folder card=d/a.jpg,1 card=a.avi,1025 card=p,pipe",
    "account.user_count=2 account.user_name[1]=ann account.user_name[2]=12 account.admin_password=p",
    "site=A,NONE,OPEN,Infra,1,-50 line=b+by+Motion+Detection rssi=-42 eth0=10.0.0.2 ppp0=10.1.1.1",
    "product=",
    "product.sensor=ov7725 product.sensor_caps=Brightness+BLCompensation+BLControl product.has_h264=0",
    "product.nosuch=1",
    "lan.dhcp=1 pppoe.enable=1 pppoe.user=u ddns.provider=dyndns ntp.method=1 motiond.mbmask=0",
};

std::string escaped(std::string_view text) {
  std::string query;
  for (const char c : text) appendEscaped(c, &query);
  return query;
}

// A value from the row itself, at or beside its limits, or the input's own.
std::string valueFor(const ParamRow& row, const void* state, Input* input) {
  const unsigned choice = input->number();
  const Words words = wordsOf(row, state);
  if (choice < 128 && !words.empty()) return words[choice % words.size()];
  const Bounds bounds = boundsOf(row, state);
  const std::int64_t numbers[] = {bounds.min,       bounds.max, bounds.min - 1LL,
                                  bounds.max + 1LL, 0,          bounds.max / 2};
  if (choice < 192) return std::to_string(numbers[choice % std::size(numbers)]);
  if (choice < 208) return std::string(row.size + choice % 3, 'a');
  return std::string{input->line()};
}

CgiInput requestOf(const Api& api, Input* input) {
  const unsigned form = input->number();
  const void* state = nullptr;
  static const ProductInfo kNone;
  if (api.state != nullptr) state = api.state(kNone);
  std::string query;
  std::string members;
  while (!input->rest().empty()) {
    const unsigned choice = input->number();
    const bool isOwn = choice < 224 && !api.rows.rows.empty();
    const ParamRow* row = isOwn ? &api.rows.rows[choice % api.rows.rows.size()] : nullptr;
    const std::string name = row != nullptr ? row->name : std::string{input->line()};
    const std::string value = row != nullptr ? valueFor(*row, state, input) : std::string{input->line()};
    query += (query.empty() ? "" : "&") + (row != nullptr ? name : escaped(name)) + "=" + escaped(value);
    members +=
        (members.empty() ? "" : ",") + jsonString(name) + ":" + (form & 4U ? value : jsonString(value));
  }
  if ((form & 1U) == 0 || query.empty()) return get(query);
  return form & 2U ? json("{" + members + "}") : post(query);
}

std::set<int> statusesOf(const Api& api) {
  std::set<int> statuses{200, 400, 404, 413, 500};
  for (const ApiCode& own : api.codes) statuses.insert(own.code);
  return statuses;
}

WholeReply serve(const char* name, CgiInput input, bool isJson, std::string* response) {
  if (isJson) input.environment["HTTP_ACCEPT"] = "application/json";
  scripted().beginRequest();
  *response = capture(input, findEndpoint(name)->serve);
  return wholeReply(*response, isJson);
}

// A request in both forms. With a fault, one of its platform calls fails, or a daemon answers with other
// bytes.
void request(Input input) {
  const auto& [name, apiOf] =
      kEndpoints<Served, ServedOf>[input.number() % std::size(kEndpoints<Served, ServedOf>)];
  const std::string state = kStates[input.number() % std::size(kStates)];
  const unsigned fault = input.number();
  const unsigned place = input.number();
  const std::string_view bytes = fault >= 192 ? input.line() : "";
  const CgiInput given = requestOf(apiOf(), &input);
  const std::string& sent = given.body.empty() ? given.environment.at("QUERY_STRING") : given.body;
  const bool isRead = sent.empty() || sent == "{}";
  std::string text;
  std::string json;
  std::vector<std::string> calls;
  if (fault >= 128) {
    scripted().reset(state);
    serve(name, given, false, &text);
    calls = scripted().calls;
  }
  const auto prepare = [&] {
    scripted().reset(state);
    if (calls.empty()) return;
    const std::string& call = calls[place % calls.size()];
    if (fault >= 192)
      daemons().answers[call] = bytes;
    else
      scripted().results[call] = static_cast<int>(fault % 16) - 2;
  };
  prepare();
  const WholeReply inText = serve(name, given, false, &text);
  const std::string writes = scripted().writes();
  prepare();
  const WholeReply inJson = serve(name, given, true, &json);
  require(inText.status != 0, name, text);
  require(inJson.status != 0, name, json);
  // As text, this one tells a failure with 200.
  const bool differs = std::string_view{name} == "sdcard_download.cgi";
  require(differs || inText.status == inJson.status, "both forms have the same status", text + json);
  require(statusesOf(apiOf()).contains(inText.status), "the description names the status", name + text);
  if (fault < 128 && inText.status != 200 && inText.status != 500)
    require(writes.empty(), "a refusal writes nothing", name + text + writes);
  if (isRead) require(writes.empty(), "a read writes nothing", name + text + writes);
}

void readProducts(Input input) {
  ProductInfo info;
  if (!info.parse(std::string{input.rest()})) return;
  for (const char* name : {"eth0", "ppp0", "ra0", "x"}) info.interfaceName(name);
  info.hasModule("x");
  info.sensor_caps.spaced();
}

// The names of a card's entries come from whoever filled it.
void listCards(Input input) {
  const unsigned form = input.number();
  scripted().reset("sd.state=2 sd.free=1");
  for (std::string path{input.line()}; !path.empty(); path = input.line())
    if (path.front() != '/' && path.find('\0') == path.npos)
      scripted().card[path] = path.size() % 2 ? "folder" : "7";
  const std::map<std::string, std::string> card = scripted().card;
  std::string response;
  for (const char* name : {"sdcard_list.cgi", "sdcard_delete.cgi", "sdcard_download.cgi"}) {
    const std::string first = card.empty() ? "" : escaped(card.begin()->first);
    const std::string query = std::string{name}.find("list") != std::string::npos ? "pagesize=20"
                              : name[7] == 'd' && name[8] == 'e'                  ? "name=" + first
                                                                                  : "file=" + first;
    const WholeReply reply = serve(name, get(query), form % 2 != 0, &response);
    require(reply.status != 0, name, response);
  }
}

struct Target {
  char letter;
  void (*run)(Input input);
};
constexpr Target kTargets[] = {{'b', restoreBackups}, {'c', listCards},    {'f', parseForms},
                               {'j', parseBodies},    {'p', readProducts}, {'q', request},
                               {'r', readRecords},    {'s', readPackages}, {'w', readSurvey}};

}  // namespace
}  // namespace camera::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using camera::test::kTargets;
  const std::string_view bytes{reinterpret_cast<const char*>(data), size};
  static const char* const kWanted = std::getenv("CAMERA_FUZZ_TARGETS");  // letters; all without it
  if (bytes.empty() || (kWanted != nullptr && std::strchr(kWanted, bytes[0]) == nullptr)) return -1;
  for (const auto& [letter, run] : kTargets)
    if (letter == bytes[0]) return run(camera::test::Input{bytes.substr(1)}), 0;
  return -1;  // not for the corpus
}
