// A camera platform that records every call and returns what the test scripted, linked in place of the
// real one.
#include "tests/handlers/scripted_platform.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "framework/checks.h"
#include "platform/card/card.h"
#include "platform/clock/clock.h"
#include "platform/log.h"
#include "platform/product/product_info.h"
#include "platform/shell.h"
#include "platform/store/record_fields.h"
#include "platform/store/record_text.h"
#include "platform/store/settings.h"
#include "tests/handlers/scripted_daemons.h"

namespace camera::test {
namespace {

constexpr int kUntouched = 0xA5;  // in the bytes that no endpoint uses

// The record and the element that a name such as "lan.dhcp" or "rtspsvr.urlentry[1]" stands for.
std::pair<std::size_t, Element> locate(const std::string& name) {
  const std::size_t dot = name.find('.');
  for (std::size_t i = 0; i < kRecordCount; ++i) {
    if (name.substr(0, dot) != kRecords[i]->name) continue;
    if (const auto element = findElement(*kRecords[i], name.substr(dot + 1))) return {i, *element};
  }
  throw std::runtime_error{"no such setting: " + name};
}

std::map<std::string, std::string> readProduct() {
  std::map<std::string, std::string> lines;
  std::ifstream file{CAMERA_SOURCE_DIR "/virtual-camera/products/full/product.conf"};
  for (std::string line; std::getline(file, line);) {
    const std::size_t equals = line.find(" = ");
    if (equals != line.npos && !line.starts_with('#'))
      lines[line.substr(0, equals)] = line.substr(equals + 3);
  }
  return lines;
}

InterfaceInfo interfaceAt(const std::string& address) {
  InterfaceInfo info{};
  inet_pton(AF_INET, address.c_str(), &info.address);
  inet_pton(AF_INET, "255.255.240.0", &info.netmask);
  inet_pton(AF_INET, "192.168.0.1", &info.gateway);
  return info;
}

int answer(const std::string& call) {
  return scripted().answer(call);
}

// The product information of the request, which reads it once.
struct {
  bool isRead = false;
  std::unique_ptr<ProductInfo> info;
} knownProduct;

}  // namespace

ScriptedPlatform& scripted() {
  static ScriptedPlatform platform;
  return platform;
}

bool isA(const std::string& verb, const std::string& call) {
  return call.starts_with(verb) && (call.size() == verb.size() || call.find_first_of(" #") == verb.size());
}

void ScriptedPlatform::reset(const std::string& state) {
  static const std::map<std::string, std::string> fullProduct = readProduct();
  *this = {};
  daemons() = {};
  product = fullProduct;
  interfaces["eth0"] = interfaceAt("192.168.0.20");
  for (const RecordInfo* info : kRecords) {
    const auto* defaults = static_cast<const std::uint8_t*>(info->defaults);
    std::vector<std::uint8_t>& record = records.emplace_back(defaults, defaults + info->size);
    for (const Field& field : info->fields)
      if (field.kind == FieldKind::kReserved) std::memset(&record[field.offset], kUntouched, field.width);
  }
  store(state);
}

void ScriptedPlatform::store(const std::string& state) {
  std::istringstream words{state};
  for (std::string word; words >> word;) {
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    std::string value = word.substr(equals + 1);
    std::replace(value.begin(), value.end(), '+', ' ');
    if (name == "product")
      product.clear();
    else if (name.starts_with("product."))
      product[name.substr(8)] = value;
    else if (name == "eth0" || name == "ppp0" || name == "ra0") {
      interfaces.erase(name);
      if (!value.empty()) interfaces[name] = interfaceAt(value);
    } else if (name == "site")
      sites += value + "\n";
    else if (name == "line")
      printed.push_back(value + "\n");
    else if (name == "card")
      card[value.substr(0, value.rfind(','))] = value.substr(value.rfind(',') + 1);
    else if (name == "rssi")
      rssi = std::stoi(value);
    else if (name == "time")
      time = std::stoll(value);
    else if (!daemons().store(name, value)) {
      const auto [i, element] = locate(name);
      EXPECT_TRUE(parseElement(*element.field, value, records[i].data() + element.offset)) << word;
    }
  }
}

std::string ScriptedPlatform::stored(const std::string& name) const {
  const auto [i, element] = locate(name);
  return formatElement(*element.field, records[i].data() + element.offset);
}

void ScriptedPlatform::beginRequest() {
  calls.clear();
  log.clear();
  times_.clear();
  knownProduct = {};
  unfinished = 0;
}

int ScriptedPlatform::answer(const std::string& call) {
  const int times = ++times_[call];
  calls.push_back(times == 1 ? call : call + "#" + std::to_string(times));
  const auto result = results.find(calls.back());
  return result == results.end() ? 0 : result->second;
}

std::string ScriptedPlatform::history(const std::vector<std::string>& verbs) const {
  std::string text;
  for (const std::string& call : calls) {
    const bool told =
        std::any_of(verbs.begin(), verbs.end(), [&](const std::string& verb) { return isA(verb, call); });
    if (told) text += (text.empty() ? "" : " ") + call;
  }
  return text;
}

}  // namespace camera::test

using camera::test::answer;
using camera::test::scripted;

namespace camera {

std::string_view logDebug(std::string_view text) {
  scripted().log.append(text).append("\n");
  return text;
}

StoreResult loadRecord(RecordIndex index, void* record) {
  const auto i = static_cast<std::size_t>(index);
  const int result = answer(std::string{"get "} + kRecords[i]->name);
  if (result == 0) std::memcpy(record, scripted().records[i].data(), kRecords[i]->size);
  return static_cast<StoreResult>(result);
}

StoreResult storeRecord(RecordIndex index, const void* record, Actions* actions) {
  const auto i = static_cast<std::size_t>(index);
  int result = answer(std::string{"set "} + kRecords[i]->name);
  scripted().isContested = scripted().isContested || result == test::kOvertaken;
  scripted().wasOvertaken = scripted().isContested && (result == 0 || result == test::kOvertaken);
  EXPECT_EQ(firstInvalid(*kRecords[i], record), "") << "of " << kRecords[i]->name << " is out of bounds";
  forEachElement(*kRecords[i], [&](const Field& field, unsigned /*index*/, std::size_t offset) {
    const void* stored = scripted().records[i].data() + offset;
    const bool kept = std::memcmp(static_cast<const char*>(record) + offset, stored, field.width) == 0;
    EXPECT_TRUE(kept || field.kind != FieldKind::kReserved) << kRecords[i]->name << "." << field.name;
  });
  if (scripted().wasOvertaken) return StoreResult::kRefused;
  if (result != 0) return static_cast<StoreResult>(result);
  std::memcpy(scripted().records[i].data(), record, kRecords[i]->size);
  actions->records |= recordBit(index);
  scripted().unfinished |= recordBit(index);
  return StoreResult::kDone;
}

bool isStoreOvertaken() {
  return scripted().wasOvertaken;
}

bool isStoreFull() {
  return scripted().isFull;
}

void holdStore() {
  scripted().isContested = false;
}

void releaseStore() {}

void runActions(const Actions& actions) {
  EXPECT_EQ(actions.records, scripted().unfinished) << "are not the actions of what was written";
  scripted().unfinished = 0;
  std::string call = "work";
  for (std::size_t i = 0; i < kRecordCount; ++i) {
    if ((actions.records >> i & 1) != 0) call += std::string{call == "work" ? " " : ","} + kRecords[i]->name;
  }
  answer(call);
}

StoreResult resetImage(const ImageSettings& factory) {
  const int result = answer("set image to factory");
  if (result != 0 && result != test::kOvertaken) return static_cast<StoreResult>(result);
  constexpr auto kImage = static_cast<std::size_t>(RecordIndex::image);
  std::memcpy(scripted().records[kImage].data(), &factory, kRecords[kImage]->size);
  return StoreResult::kDone;  // whatever others wrote
}

void applyTimeZone() {
  answer("ask zone");
}

std::int64_t cameraTime() {
  return answer("time") == 0 ? scripted().time : -1;
}

int wirelessRssi() {
  return answer("ask rssi") == 0 ? scripted().rssi : 0;
}

std::optional<InterfaceInfo> activeInterface(std::string_view name) {
  const auto found = scripted().interfaces.find(std::string{name});
  const bool active = found != scripted().interfaces.end();
  if (answer((active ? "get " : "ask ") + std::string{name}) != 0 || !active) return std::nullopt;
  return found->second;
}

std::vector<Site> surveySites() {
  std::string sites = answer("ask sites") == 0 ? scripted().sites : "";
  std::replace(sites.begin(), sites.end(), ',', '\t');
  return parseSites(sites);
}

const ProductInfo* productInfo() {
  auto& [isRead, info] = test::knownProduct;
  if (isRead) return info.get();
  isRead = true;
  std::string text;
  for (const auto& [key, value] : scripted().product) text.append(key).append("=").append(value).append("\n");
  auto read = std::make_unique<ProductInfo>();
  if (answer("get product") == 0 && read->parse(text)) info = std::move(read);
  return info.get();
}

int runShell(const char* command) {
  return answer(std::string{"run "} + command);
}

void awaitMount() {
  answer("ask 1 s");
}

void makeCardFolder(const std::string& path) {
  answer("run mkdir " + path);
}

int readCommand(const char* command, void (*take)(const char* piece, void* context), void* context,
                const ReadLimits& /*limits*/) {
  const int status = answer(std::string{"get "} + command);
  for (const std::string& piece : scripted().printed)
    if (status == 0) take(piece.c_str(), context);
  return status;
}

}  // namespace camera

// Takes the place of libc's: no command of an endpoint ever runs on the machine that tests it.
extern "C" int system(const char* command) {
  return answer(std::string{"run "} + command);
}
