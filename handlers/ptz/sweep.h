// Base of auto_pan.cgi and auto_patrol.cgi: starts or stops an endless movement.
#pragma once

#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

struct Sweep {
  std::int32_t act;
};
enum SweepAct : std::int32_t { kNoChange, kStartSweep, kStopSweep };
inline constexpr const char* kSweepActs[] = {"", "go", "stop"};
inline constexpr auto kSweepParams = paramRows<Sweep>(choiceParam<&Sweep::act>("act", kSweepActs).required());

class SweepEndpoint : public PtzEndpoint<StateEndpoint<kSweepParams, Takes::kCommand>> {
 protected:
  explicit SweepEndpoint(PtzCode start) : start_(start) {}

  int carryOut(Sweep& wanted) override {
    if (wanted.act == kNoChange) return 200;
    return resultOf(ptzCommand(wanted.act == kStartSweep ? start_ : PtzCode::kStop));
  }

 private:
  PtzCode start_;
};

}  // namespace camera
