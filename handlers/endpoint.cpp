// The lifecycle of a request and its settings transaction, written once for all endpoints.
#include "handlers/endpoint.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "platform/log.h"

namespace camera {
namespace {

// From the second attempt on, the store is locked until the action programs run. Only an endpoint that writes
// again after that can need another attempt.
constexpr int kMostAttempts = 8;

struct FeatureName {
  Feature feature;
  const char* name;
};
constexpr FeatureName kFeatureNames[] = {
    {&ProductInfo::has_speaker, "speaker"},        {&ProductInfo::has_mic, "microphone"},
    {&ProductInfo::has_pan_tilt, "pan/tilt head"}, {&ProductInfo::has_privacy, "privacy mode"},
    {&ProductInfo::has_sdcard, "SD card slot"},    {&ProductInfo::has_irled, "infrared LEDs"},
    {&ProductInfo::has_icr, "day/night switch"},   {&ProductInfo::wireless, "wireless client"},
};

constexpr std::size_t kMostLogged = 40;  // bytes of a name that the log repeats at most

const char* nameOf(RecordIndex index) {
  return kRecords[static_cast<std::size_t>(index)]->name;
}

// Appends a parameter's name to a list for the log. A long name is cut. What is not visible ASCII is written
// as %XX, so that no name can start a line.
void appendLogged(std::string_view name, std::string* names) {
  if (!names->empty()) *names += ", ";
  if (name.empty()) *names += "(no name)";
  for (const char c : name.substr(0, kMostLogged)) {
    if (c > ' ' && c <= '~') {
      *names += c;
    } else {
      appendEscaped(c, names);
    }
  }
  if (name.size() > kMostLogged) *names += "...";
}

}  // namespace

void Endpoint::serve() {
  const CgiVariables variables = cgiVariables();
  if (prefersJson(variables.accept)) reply_.useJson();
  for (const ParamRow& row : params_.rows) {
    if (row.isSecret) reply_.forbidStoring();
  }
  const int result = answer(variables);
  if (!ignored_.empty() && result < 400) reportIgnored();
  if (!warnings_.empty()) reply_.value("warnings", warnings_.text());
  if (result == 200) {
    reply_.send();
  } else {
    reply_.sendFailure(result, failure_.parameter, failure_.message);
  }
}

void Endpoint::reportIgnored() {
  std::string logged;
  JsonArray names;
  for (const std::string& name : ignored_) {
    appendLogged(name, &logged);
    names.add(jsonString(shortened(name)));
  }
  logDebug(joined({program_invocation_short_name, ": ignored: ", logged}));
  if (isJson()) reply_.value("ignored", names.text());
}

void Endpoint::warn(std::string_view text) {
  if (isJson()) warnings_.add(jsonString(text));
}

void Endpoint::warnOfPort(std::initializer_list<int> stored) {
  const char* used = std::getenv("SERVER_PORT");
  int port = 0;
  if (!isJson() || used == nullptr || !parseInteger(used, 1, UINT16_MAX, &port)) return;
  if (std::find(stored.begin(), stored.end(), port) == stored.end())
    warn(joined({"httpport: the web server does not listen on this port, but on ", used}));
}

// A failure of load (404, 500) takes precedence over what is wrong with the request (400). Only
// Takes::kNothing rejects a parameter first.
int Endpoint::answer(const CgiVariables& variables) {
  int result = load();
  readRequest(variables, keepsBytes, &request_);
  const bool hasParams = !request_.params.empty() || !request_.members.empty();
  if (hasParams && (result == 200 || takes_ == Takes::kNothing)) {
    result = takeMembers();
    if (result == 200) result = applyUntilStored();
  } else if (result == 200 && !request_.error.empty()) {
    result = fail(400, request_.error);
  } else if (result == 200 && !hasParams && takes_ == Takes::kCommand) {
    result = refuseMissing();
  }
  return result == 200 ? reply() : result;
}

// Turns what only JSON has into the texts that a form has.
int Endpoint::takeMembers() {
  for (const JsonMember& member : request_.members) {
    if (const int result = takeMember(member); result != 200) return result;
  }
  return 200;
}

int Endpoint::takeMember(const JsonMember& member) {
  std::string text;
  if (knows(member.name)) {
    const int result =
        member.kind == JsonMember::kBoolean ? takeBoolean(member, &text) : takeArray(member, &text);
    if (result != 200) return result;
  }
  request_.params.insert_or_assign(member.name, text);
  return 200;
}

int Endpoint::takeBoolean(const JsonMember& member, std::string* text) {
  *text = switchWord(member.texts.front() == "true", wordsOf(member.name));
  return text->empty() ? refuse(member.name, "true and false are only for off and on, or no and yes") : 200;
}

int Endpoint::takeArray(const JsonMember& member, std::string* text) {
  const ParamRow* row = params_.find(member.name);
  const std::string_view separators = row == nullptr ? "" : row->separators;
  if (separators.empty()) return refuse(member.name, "an array is only for a list");
  for (const std::string& item : member.texts) {
    const std::size_t found = item.find_first_of(separators);
    if (found != item.npos) return refuse(member.name, joined({"no item may hold ", item.substr(found, 1)}));
    text->append(text->empty() ? "" : separators.substr(0, 1)).append(item);
  }
  return 200;
}

Words Endpoint::wordsOf(std::string_view name) const {
  const ParamRow* row = params_.find(name);
  return row == nullptr ? Words{} : row->words;
}

int Endpoint::applyUntilStored() {
  int result = apply();
  if (!isOvertaken_) return result;
  for (int attempt = 1; isOvertaken_ && attempt < kMostAttempts; ++attempt) {
    holdStore();
    isOvertaken_ = false;
    writeResult_ = StoreResult::kDone;
    failure_ = {};
    given_ = 0;
    ignored_.clear();
    result = load();
    if (result == 200) result = apply();
  }
  // An earlier attempt may have stored records whose action programs have not run yet.
  if (result == 200 && actions_.records != 0) result = commit();
  releaseStore();
  return result;
}

int Endpoint::takeParams(void* state) {
  return params_.take(request_.params, state, &given_, &ignored_, &failure_) ? 200 : 400;
}

int Endpoint::refuseMissing() {
  const auto row =
      std::find_if(params_.rows.begin(), params_.rows.end(), [](const ParamRow& r) { return r.isRequired; });
  return row == params_.rows.end() ? fail(400, "a parameter is required")
                                   : refuse(row->name, "required: " + acceptedBy(*row, nullptr));
}

int Endpoint::refuse(std::string_view name, std::string_view what) {
  return refuse(Refusal{std::string{name}, std::string{what}});
}

int Endpoint::refuse(Refusal refusal) {
  failure_ = std::move(refusal);
  return 400;
}

int Endpoint::refuseValue(std::size_t row) {
  return refuse(params_.rows[row].name, acceptedBy(params_.rows[row], nullptr));
}

int Endpoint::fail(int code, std::string_view why) {
  failure_ = {{}, std::string{why}};
  return code;
}

const ProductInfo* Endpoint::product() {
  const ProductInfo* known = productInfo();
  if (known == nullptr) fail(500, "product information: cannot be read");
  return known;
}

int Endpoint::require(Feature feature) {
  const ProductInfo* known = product();
  if (known == nullptr) return 500;
  if (known->*feature) return 200;
  const auto* name = std::find_if(std::begin(kFeatureNames), std::end(kFeatureNames),
                                  [&](const FeatureName& n) { return n.feature == feature; });
  return fail(404,
              joined({"this camera has no ", name == std::end(kFeatureNames) ? "such part" : name->name}));
}

bool Endpoint::readRecord(RecordIndex index, void* record) {
  if (loadRecord(index, record) == StoreResult::kDone) return true;
  fail(500, joined({"settings: ", nameOf(index), " cannot be read"}));
  return false;
}

void Endpoint::writeRecord(RecordIndex index, const void* record) {
  if (writeResult_ != StoreResult::kDone) return;
  writeResult_ = storeRecord(index, record, &actions_);
  if (writeResult_ == StoreResult::kDone) return;
  const bool isRefused = writeResult_ == StoreResult::kRefused;
  isOvertaken_ = isRefused && isStoreOvertaken();
  failure_.message =
      joined({"settings: ", nameOf(index), isRefused ? " refused by the store" : " cannot be stored",
              !isRefused && isStoreFull() ? ": no space left" : ""});
}

int Endpoint::commit(int refused) {
  if (writeResult_ != StoreResult::kDone) return writeResult_ == StoreResult::kRefused ? refused : 500;
  if (actions_.records != 0) runActions(actions_);
  actions_ = {};
  return 200;
}

int ReadOnlyEndpoint::apply() {
  return refuse(unknownParam(queries().begin()->first));
}

}  // namespace camera
