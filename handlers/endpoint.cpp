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
    {&PIB::has_speaker, "speaker"},        {&PIB::has_mic, "microphone"},
    {&PIB::has_pan_tilt, "pan/tilt head"}, {&PIB::has_privacy, "privacy mode"},
    {&PIB::has_sdcard, "SD card slot"},    {&PIB::has_irled, "infrared LEDs"},
    {&PIB::has_icr, "day/night switch"},
};

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
    cam_hold();
    isOvertaken_ = false;
    writeResult_ = 0;
    refusal.clear();
    given_ = GivenParams{params_.rows};
    result = load();
    if (result == 200) result = apply();
  }
  // What an earlier attempt wrote may be all that there was to do.
  if (result == 200 && inTransaction_) result = commit();
  cam_release();
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

const PIB* Endpoint::product() {
  if (product_) return &*product_;
  try {
    product_.emplace().init();
    return &*product_;
  } catch (const PIBError&) {
    product_.reset();
    fail(500, "product information: cannot be read");
    return nullptr;
  }
}

int Endpoint::require(Feature feature) {
  const PIB* known = product();
  if (known == nullptr) return 500;
  if (known->*feature == 1) return 200;
  const auto* name = std::find_if(std::begin(kFeatureNames), std::end(kFeatureNames),
                                  [&](const FeatureName& n) { return n.feature == feature; });
  return fail(
      404, std::string{"this camera has no "} + (name == std::end(kFeatureNames) ? "such part" : name->name));
}

bool Endpoint::noteRead(const char* record, int result) {
  if (result != 0) fail(500, std::string{"settings: "} + record + " cannot be read");
  return result == 0;
}

int Endpoint::take(void* state) {
  return params_.take(queries, state, &given_, &refusal) ? 200 : 400;
}

void Endpoint::show(const void* state) {
  params_.reply(*this, state);
}

void Endpoint::begin() {
  if (!inTransaction_) cam_clean_actions(&actions_);
  inTransaction_ = true;
}

void Endpoint::noteWrite(const char* record, int result) {
  writeResult_ = result;
  if (result == 0) return;
  isOvertaken_ = result == 1 && cam_overtaken();
  refusal =
      std::string{"settings: "} + record + (result == 1 ? " refused by the store" : " cannot be stored");
}

int Endpoint::commit(int refused) {
  if (writeResult_ != 0) return writeResult_ == 1 ? refused : 500;
  if (inTransaction_) cam_work_actions(&actions_);
  inTransaction_ = false;
  return 200;
}

int ReadOnlyEndpoint::apply() {
  return fail(400, unknownParam(queries.begin()->first));
}

}  // namespace camera
