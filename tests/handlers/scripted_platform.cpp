// A camera platform that records every call and gives back what the test scripted, linked in place of the
// real one.
#include "tests/handlers/scripted_platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "framework/cgi_table.h"
#include "framework/cgilet.h"
#include "platform/clock/clock.h"
#include "platform/log.h"
#include "platform/product/pib.h"
#include "platform/shell.h"
#include "platform/store/cam.h"
#include "platform/store/record_text.h"
#include "tests/support/cgi_run.h"

namespace camera::test {
namespace {

// The record and the element that a name such as "lan.dhcp" or "rtspsvr.urlentry[1]" stands for.
std::pair<std::size_t, Element> locate(const std::string& name) {
  const std::size_t dot = name.find('.');
  for (std::size_t i = 0; i < kRecordCount; ++i) {
    if (name.substr(0, dot) != kRecords[i]->name) continue;
    if (const auto element = findElement(*kRecords[i], name.substr(dot + 1))) return {i, *element};
  }
  throw std::runtime_error{"no such setting: " + name};
}

int answer(const std::string& call) {
  scripted().calls.push_back(call);
  return scripted().results[call];
}

int readRecord(RecordIndex index, void* record) {
  const auto i = static_cast<std::size_t>(index);
  const int result = answer(std::string{"get "} + kRecords[i]->name);
  if (result == 0) std::memcpy(record, scripted().records[i].data(), kRecords[i]->size);
  return result;
}

int writeRecord(RecordIndex index, const void* record, _cam_actions* actions, unsigned char flag) {
  const auto i = static_cast<std::size_t>(index);
  const int result = answer(std::string{"set "} + kRecords[i]->name + " " + std::to_string(flag));
  scripted().wasOvertaken = result == 0 && scripted().overtaken > 0 && scripted().overtaken-- > 0;
  if (scripted().wasOvertaken) return 1;
  if (result != 0) return result;
  std::memcpy(scripted().records[i].data(), record, kRecords[i]->size);
  actions->records |= recordBit(index);
  return 0;
}

}  // namespace

ScriptedPlatform& scripted() {
  static ScriptedPlatform platform;
  return platform;
}

void ScriptedPlatform::reset() {
  *this = {};
  for (const RecordInfo* info : kRecords) {
    const auto* defaults = static_cast<const std::uint8_t*>(info->defaults);
    records.emplace_back(defaults, defaults + info->size);
  }
}

void ScriptedPlatform::store(const std::string& values) {
  std::istringstream words{values};
  for (std::string word; words >> word;) {
    const std::size_t equals = word.find('=');
    const auto [i, element] = locate(word.substr(0, equals));
    EXPECT_TRUE(parseElement(*element.field, word.substr(equals + 1), records[i].data() + element.offset))
        << word;
  }
}

std::string ScriptedPlatform::stored(const std::string& name) const {
  const auto [i, element] = locate(name);
  return formatElement(*element.field, records[i].data() + element.offset);
}

std::string ScriptedPlatform::allCalls(bool reads) const {
  std::string text;
  for (const std::string& call : calls)
    if (reads || !call.starts_with("get ")) text += (text.empty() ? "" : " ") + call;
  return text;
}

Reply request(const char* cgi, const std::string& query) {
  const std::unique_ptr<InfCgilet> cgilet{findCgi(cgi)->create()};
  const std::string response = capture(test::get(query), [&] { serve(*cgilet); });
  std::string body = response.substr(response.find("\r\n\r\n") + 4);
  std::replace(body.begin(), body.end(), '\n', ' ');
  return {response.starts_with("Status: ") ? std::stoi(response.substr(8)) : 0, body};
}

void expectRows(const char* cgi, const char* state, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string{cgi} + "?" + row.query + "  on " + state + " " + row.state);
    scripted().reset();
    scripted().store(std::string{state} + " " + row.state);
    const Reply reply = request(cgi, row.query);
    const bool bare = row.status != 200 && row.reply.empty();
    EXPECT_EQ(reply.status, row.status);
    EXPECT_EQ(reply.body, bare ? "error=" + std::to_string(row.status) + " " : row.reply);
    EXPECT_EQ(scripted().writes(), row.writes);
  }
}

void expectRefused(const char* cgi, const char* state, const std::vector<std::string>& queries) {
  for (const std::string& query : queries) expectRows(cgi, state, {{query, "", 400, "", ""}});
}

void expectResults(const char* cgi, const char* state, const std::vector<ResultRow>& rows) {
  for (const auto& [call, result, query, status, calls] : rows) {
    SCOPED_TRACE(std::string{cgi} + "?" + query + "  with " + call + " giving " + std::to_string(result));
    scripted().reset();
    scripted().store(state);
    scripted().results[call] = result;
    EXPECT_EQ(request(cgi, query).status, status);
    EXPECT_EQ(scripted().allCalls(), calls);
  }
}

}  // namespace camera::test

std::string dbg_log(const char* format, ...) {
  return format;
}

void cam_clean_actions(_cam_actions* actions) {
  camera::test::answer("clean");
  actions->records = 0;
}

int cam_work_actions(_cam_actions* actions) {
  std::string call = "work";
  for (std::size_t i = 0; i < camera::kRecordCount; ++i) {
    if ((actions->records >> i & 1) != 0)
      call += std::string{call == "work" ? " " : ","} + camera::kRecords[i]->name;
  }
  return camera::test::answer(call);
}

#define CAMERA_SCRIPT_RECORD(name, type)                                                \
  int cam_get_##name(type* record) {                                                    \
    return camera::test::readRecord(camera::RecordIndex::name, record);                 \
  }                                                                                     \
  int cam_set_##name(const type* record, _cam_actions* actions, unsigned char flag) {   \
    return camera::test::writeRecord(camera::RecordIndex::name, record, actions, flag); \
  }
CAMERA_RECORDS(CAMERA_SCRIPT_RECORD)

bool cam_overtaken() {
  return camera::test::scripted().wasOvertaken;
}

void cam_hold() {
  camera::test::scripted().overtaken = 0;
}

void cam_release() {}

void apply_timezone() {
  camera::test::scripted().calls.emplace_back("get zone");
}

std::int64_t camera::cameraTime() {
  return camera::test::scripted().time;
}

int cam_get_wireless_rssi() {
  return camera::test::scripted().rssi;
}

bool GetActiveIFInfo(const char* name, IF_INFO* info) {
  const auto found = camera::test::scripted().interfaces.find(name);
  if (found == camera::test::scripted().interfaces.end()) return false;
  *info = found->second;
  return true;
}

sitelist* dumpSites(sitelist* list) {
  std::vector<sitelist>& sites = camera::test::scripted().sites;
  camera::test::scripted().calls.emplace_back("get sites");
  for (std::size_t i = 1; i < sites.size(); ++i) sites[i - 1].next = &sites[i];
  return sites.empty() ? list : sites.data();
}

void ClearQueue(sitelist* list) {
  const std::vector<sitelist>& sites = camera::test::scripted().sites;
  const bool whole = list == (sites.empty() ? nullptr : sites.data());
  camera::test::scripted().calls.emplace_back(whole ? "get freed" : "freed what it did not get");
}

int PIB::init() {
  if (camera::test::scripted().productFails) throw PIBError();
  parse(camera::test::scripted().productInfo);
  return 0;
}

int check_extra_modules(const char* name) {
  PIB product;
  product.init();
  return product.hasModule(name) ? 1 : 0;
}

int run_shell(const char* command) {
  return camera::test::answer(std::string{"system "} + command);
}

int read_command(const char* command, void (*take)(const char* piece, void* context), void* context) {
  const int status = camera::test::answer(std::string{"popen "} + command);
  for (const std::string& piece : camera::test::scripted().printed)
    if (status == 0) take(piece.c_str(), context);
  return status;
}

// Takes the place of libc's: no command of an endpoint ever runs on the machine that tests it.
extern "C" int system(const char* command) {
  return camera::test::answer(std::string{"system "} + command);
}
