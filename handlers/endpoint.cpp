// The lifecycle of a request and its settings transaction, written once for all endpoints.
#include "handlers/endpoint.h"

#include <algorithm>

namespace camera {
namespace {

constexpr int kMostAttempts = 8;  // the second has the store to itself, up to its first actions

struct FeatureName {
  Feature feature;
  const char* name;
};
constexpr FeatureName kFeatureNames[] = {
    {&ProductInfo::has_speaker, "speaker"},        {&ProductInfo::has_mic, "microphone"},
    {&ProductInfo::has_pan_tilt, "pan/tilt head"}, {&ProductInfo::has_privacy, "privacy mode"},
    {&ProductInfo::has_sdcard, "SD card slot"},    {&ProductInfo::has_irled, "infrared LEDs"},
    {&ProductInfo::has_icr, "day/night switch"},
};

const char* nameOf(RecordIndex index) {
  return kRecords[static_cast<std::size_t>(index)]->name;
}

}  // namespace

void Endpoint::onLoad() {
  status = load();
  if (status == 200 && takes_ == Takes::kCommand) status = 400;
}

void Endpoint::onApply() {
  const int ready = takes_ == Takes::kCommand ? 400 : 200;
  // A load that failed has said why, and a bad command has nothing said yet.
  if (takes_ != Takes::kNothing && (status != ready || !refusal.empty())) return;
  status = apply();
  if (isOvertaken_) status = applyAgain();
}

int Endpoint::applyAgain() {
  int result = 400;
  for (int attempt = 1; isOvertaken_ && attempt < kMostAttempts; ++attempt) {
    holdStore();
    isOvertaken_ = false;
    writeResult_ = StoreResult::kDone;
    refusal.clear();
    given_ = GivenParams{params_.rows};
    result = load();
    if (result == 200) result = apply();
  }
  // What an earlier attempt wrote may be all that there was to do.
  if (result == 200 && actions_.records != 0) result = commit();
  releaseStore();
  return result;
}

void Endpoint::onReply() {
  // What could not be read as a request is refused without a look at what it might have asked.
  if (status == 200 && !malformed()) status = reply();
  if (status == 200) {
    infOK();
    return;
  }
  if (status == 400 && refusal.empty()) refusal = missingParam();
  infFail(status);
}

std::string Endpoint::missingParam() const {
  const auto row =
      std::find_if(params_.rows.begin(), params_.rows.end(), [](const ParamRow& r) { return r.isRequired; });
  return row == params_.rows.end() ? "a parameter is required"
                                   : std::string{row->name} + ": required: " + acceptedBy(*row, nullptr);
}

int Endpoint::refuse(std::string_view name, std::string_view accepted) {
  refusal = std::string{name} + ": " + std::string{accepted};
  return 400;
}

int Endpoint::refuse(std::string_view name) {
  const auto row = std::find_if(params_.rows.begin(), params_.rows.end(),
                                [&](const ParamRow& r) { return name == r.name; });
  return row == params_.rows.end() ? fail(400, unknownParam(name)) : refuse(name, acceptedBy(*row, nullptr));
}

int Endpoint::fail(int code, std::string_view why) {
  refusal = why;
  return code;
}

const ProductInfo* Endpoint::product() {
  if (product_) return &*product_;
  try {
    product_.emplace().init();
    return &*product_;
  } catch (const ProductInfoError&) {
    product_.reset();
    fail(500, "product information: cannot be read");
    return nullptr;
  }
}

int Endpoint::require(Feature feature) {
  const ProductInfo* known = product();
  if (known == nullptr) return 500;
  if (known->*feature == 1) return 200;
  const auto* name = std::find_if(std::begin(kFeatureNames), std::end(kFeatureNames),
                                  [&](const FeatureName& n) { return n.feature == feature; });
  return fail(
      404, std::string{"this camera has no "} + (name == std::end(kFeatureNames) ? "such part" : name->name));
}

bool Endpoint::readRecord(RecordIndex index, void* record) {
  if (loadRecord(index, record) == StoreResult::kDone) return true;
  fail(500, std::string{"settings: "} + nameOf(index) + " cannot be read");
  return false;
}

int Endpoint::take(void* state) {
  return params_.take(queries, state, &given_, &refusal) ? 200 : 400;
}

void Endpoint::show(const void* state) {
  params_.reply(*this, state);
}

void Endpoint::writeRecord(RecordIndex index, const void* record) {
  if (writeResult_ != StoreResult::kDone) return;
  writeResult_ = storeRecord(index, record, &actions_);
  if (writeResult_ == StoreResult::kDone) return;
  const bool isRefused = writeResult_ == StoreResult::kRefused;
  isOvertaken_ = isRefused && isStoreOvertaken();
  refusal =
      std::string{"settings: "} + nameOf(index) + (isRefused ? " refused by the store" : " cannot be stored");
}

int Endpoint::commit(int refused) {
  if (writeResult_ != StoreResult::kDone) return writeResult_ == StoreResult::kRefused ? refused : 500;
  if (actions_.records != 0) runActions(actions_);
  actions_ = {};
  return 200;
}

int ReadOnlyEndpoint::apply() {
  return fail(400, unknownParam(queries.begin()->first));
}

}  // namespace camera
