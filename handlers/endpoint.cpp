// The lifecycle of a request and its settings transaction, written once for all endpoints.
#include "handlers/endpoint.h"

#include <algorithm>
#include <cerrno>

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

const char* nameOf(RecordIndex index) {
  return kRecords[static_cast<std::size_t>(index)]->name;
}

}  // namespace

void Endpoint::serve() {
  const int result = answer();
  if (!ignored_.empty() && result < 400)
    logDebug("%s: ignored: %s", program_invocation_short_name, ignored_.c_str());
  if (result == 200) {
    reply_.send();
  } else {
    reply_.sendFailure(result, message_);
  }
}

// A failure of load (404, 500) takes precedence over what is wrong with the request (400). Only
// Takes::kNothing rejects a parameter first.
int Endpoint::answer() {
  int result = load();
  request_ = readRequest(keepsBytes);
  const bool hasParams = !request_.params.empty();
  if (hasParams && (result == 200 || takes_ == Takes::kNothing)) {
    result = applyUntilStored();
  } else if (result == 200 && request_.error != nullptr) {
    result = fail(400, request_.error);
  } else if (result == 200 && !hasParams && takes_ == Takes::kCommand) {
    result = refuseMissing();
  }
  return result == 200 ? reply() : result;
}

int Endpoint::applyUntilStored() {
  int result = apply();
  if (!isOvertaken_) return result;
  for (int attempt = 1; isOvertaken_ && attempt < kMostAttempts; ++attempt) {
    holdStore();
    isOvertaken_ = false;
    writeResult_ = StoreResult::kDone;
    message_.clear();
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
  return params_.take(request_.params, state, &given_, &ignored_, &message_) ? 200 : 400;
}

int Endpoint::refuseMissing() {
  const auto row =
      std::find_if(params_.rows.begin(), params_.rows.end(), [](const ParamRow& r) { return r.isRequired; });
  return row == params_.rows.end() ? fail(400, "a parameter is required")
                                   : refuse(row->name, "required: " + acceptedBy(*row, nullptr));
}

int Endpoint::refuse(std::string_view name, std::string_view what) {
  return fail(400, joined({name, ": ", what}));
}

int Endpoint::refuseValue(std::size_t row) {
  return refuse(params_.rows[row].name, acceptedBy(params_.rows[row], nullptr));
}

int Endpoint::fail(int code, std::string_view why) {
  message_ = why;
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
  message_ = joined({"settings: ", nameOf(index), isRefused ? " refused by the store" : " cannot be stored",
                     !isRefused && isStoreFull() ? ": no space left" : ""});
}

int Endpoint::commit(int refused) {
  if (writeResult_ != StoreResult::kDone) return writeResult_ == StoreResult::kRefused ? refused : 500;
  if (actions_.records != 0) runActions(actions_);
  actions_ = {};
  return 200;
}

int ReadOnlyEndpoint::apply() {
  return fail(400, unknownParam(queries().begin()->first));
}

}  // namespace camera
